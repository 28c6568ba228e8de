#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>
#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encode/gvm/Factory.hpp>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::codec::v3::encode {
namespace {

using Code = ClusterDeltas::Code;

/// Two channels, or three, up to their deltas.
Group prepared(std::uint32_t b, std::size_t nr_samples = 512, std::size_t nr_channels = 2) {
    Group group = group_of(b, {music(nr_samples, 1), music(nr_samples, 2), music(nr_samples, 3)});
    group.origs.resize(nr_channels);
    Chain chain;
    EXPECT_TRUE(chain.detect_silence(group) && chain.rescaler(group) &&
                chain.compute_deltas(group));
    return group;
}

TEST(ClusterDeltas, ASingleChannelFitsWithoutClustering) {
    Group group = group_of(3, {music(512, 1)});
    ClusterDeltas stage;
    EXPECT_EQ(stage(group), Code::ok);
    EXPECT_TRUE(group.fits);
    EXPECT_EQ(group.trace.learns, 0u);
}

TEST(ClusterDeltas, TakesAsManyCentersAsFit) {
    Group group = prepared(8);
    ClusterDeltas stage;
    ASSERT_EQ(stage(group), Code::ok);
    EXPECT_TRUE(group.fits);
    EXPECT_LE(group.trace.need, group.trace.capacity);
    EXPECT_EQ(group.trace.capacity, 8u * 512 - 511 / 16);
    EXPECT_EQ(group.ixs.size(), 512u);
}

TEST(ClusterDeltas, ComesDownToTheFirstCountThatFits) {
    ClusterDeltas stage;
    stage.settings.randomize_deltas = false;
    Group group = prepared(6);
    group.centers_start_2 = 150;
    ASSERT_EQ(stage(group), Code::ok);
    ASSERT_TRUE(group.fits);
    const auto found = static_cast<std::uint32_t>(group.centers_1d.size());
    EXPECT_EQ(group.trace.learns, 1 + 150 - found);

    Group more = prepared(6);
    more.centers_start_2 = 150;
    more.centers_min = found + 1;
    ASSERT_EQ(stage(more), Code::ok);
    EXPECT_FALSE(more.fits) << "one center more is one too many";
    EXPECT_GT(more.trace.need, more.trace.capacity);
}

// The first count, from `start` down to the fewest, that fits with all bits counted.
std::uint32_t plain_search(Group& group, std::uint32_t start, const ClusterDeltas::Settings& s) {
    const auto nr_channels = static_cast<unsigned>(group.deltas.size() / group.size() + 1);
    const auto learner = gvm::create(s.implementation, nr_channels, group.deltas, s.update_all,
                                     s.force_origin_center, false);
    const auto n = static_cast<std::uint32_t>(group.size());
    for (std::uint32_t k = start; k >= group.centers_min; --k) {
        std::vector<unsigned> sizes;
        unsigned rice_k = 0;
        EXPECT_TRUE(learner->learn(k, s.allow_merge) && learner->measure_centers(group) &&
                    learner->get_sizes(sizes) &&
                    golomb_rice::OptimizeSizes(1, 7)(rice_k, group.budget.ixs_bits, sizes));
        if (group.budget.total() <= group.nr_bitlines * n - (n - 1) / 16) return k;
    }
    return 0;
}

void expect_the_count_of_a_plain_search(const Group& of, const ClusterDeltas::Settings& settings) {
    constexpr std::uint32_t start = 60;
    SCOPED_TRACE(testing::Message()
                 << settings.implementation << settings.allow_merge << settings.update_all
                 << settings.force_origin_center << ", " << of.deltas.size() << " deltas, "
                 << of.nr_bitlines << " bit-lines, from " << of.centers_min);
    ClusterDeltas stage;
    stage.settings = settings;
    Group group = of;
    Group twin = of;
    group.centers_start_2 = group.centers_start_3 = group.centers_max = start;
    ASSERT_EQ(stage(group), Code::ok);
    const auto found = plain_search(twin, start, settings);
    EXPECT_EQ(group.fits, found != 0);
    EXPECT_EQ(group.trace.learns, start + 1 - std::max(found, of.centers_min));
    EXPECT_EQ(group.budget.total(), twin.budget.total());
    EXPECT_EQ(group.trace.need, twin.budget.total());
}

// Counts of centers that cannot fit are passed over without a look at the sizes.
TEST(ClusterDeltas, FindsTheCountThatASearchWithAllBitsCountedFinds) {
    for (const char* const name : {"fast", "ref"})
        for (const bool allow_merge : {true, false})
            for (const std::size_t nr_channels : {2u, 3u})
                for (std::uint32_t b = 5; b <= 9; ++b)
                    expect_the_count_of_a_plain_search(prepared(b, 160, nr_channels),
                                                       {.allow_merge = allow_merge,
                                                        .randomize_deltas = false,
                                                        .implementation = name});
}

// The fewest allowed is counted even where it cannot fit, since its bits are told.
TEST(ClusterDeltas, FindsThatCountWithOtherSettingsToo) {
    for (const bool update_all : {false, true})
        for (const bool force_origin : {false, true})
            for (const std::size_t nr_channels : {2u, 3u})
                for (std::uint32_t b = 4; b <= 9; ++b)
                    for (const std::uint32_t fewest : {1u, 2u, 30u, 53u, 59u}) {
                        Group group = prepared(b, 160, nr_channels);
                        group.centers_min = fewest;
                        expect_the_count_of_a_plain_search(group,
                                                           {.update_all = update_all,
                                                            .force_origin_center = force_origin,
                                                            .randomize_deltas = false});
                    }
}

// Clusters are fewer than asked for, so that what comes next is no merge.
TEST(ClusterDeltas, FindsThatCountAmongFewerDeltasThanClusters) {
    for (const bool allow_merge : {true, false})
        for (const std::size_t nr_channels : {2u, 3u})
            for (const std::size_t nr_samples : {6u, 17u, 40u, 59u})
                for (const std::uint32_t b : {5u, 8u, 12u})
                    expect_the_count_of_a_plain_search(
                        prepared(b, nr_samples, nr_channels),
                        {.allow_merge = allow_merge, .randomize_deltas = false});
}

TEST(ClusterDeltas, LittleRoomIsATenthOfABitPerSample) {
    std::map<std::uint32_t, int> seen;
    for (std::uint32_t b = 3; b <= 12; ++b)
        for (const std::uint32_t start : {1u, 12u, 40u, 75u, 130u}) {
            Group group = prepared(b);
            group.centers_start_2 = group.centers_min = start;
            ClusterDeltas stage;
            ASSERT_EQ(stage(group), Code::ok);
            const auto need = group.trace.need;
            const auto capacity = group.trace.capacity;
            const std::uint32_t fit = need > capacity ? 1 : capacity - need <= 51 ? 2 : 3;
            EXPECT_EQ(group.trace.fit, fit) << b << " from " << start;
            EXPECT_EQ(group.fits, fit != 1);
            EXPECT_EQ(group.budget.total(), need);
            ++seen[fit];
        }
    EXPECT_EQ(seen.size(), 3u) << "too big, little spare, much spare";
}

TEST(ClusterDeltas, MixesOfTwoAndOfThreeHaveStartsOfTheirOwn) {
    for (const bool three : {false, true}) {
        Group group = group_of(12, {music(512, 1), music(512, 2), music(512, 3)});
        if (!three) group.origs.pop_back();
        group.centers_start_2 = 7;
        group.centers_start_3 = 9;
        group.centers_max = 5;
        Chain chain;
        ASSERT_EQ(chain(group), Code::ok);
        EXPECT_EQ(group.trace.start, three ? 9u : 7u);
        EXPECT_EQ(three ? group.centers_2d.size() : group.centers_1d.size(), 5u);
    }
}

TEST(ClusterDeltas, ClimbsInStepsOf30WhileMuchRoomIsLeft) {
    Group group = prepared(12);
    group.centers_start_2 = 20;
    group.centers_max = 100;
    ClusterDeltas stage;
    ASSERT_EQ(stage(group), Code::ok);
    EXPECT_EQ(group.trace.learns, 4u) << "20, 50, 80, 100";
    EXPECT_EQ(group.trace.fit, 3u) << "much is spare at the limit, and stays so";
    EXPECT_TRUE(group.fits);
}

TEST(ClusterDeltas, AStartAboveTheLimitBeginsAtTheLimit) {
    Group group = prepared(12);
    group.centers_start_2 = 500;
    group.centers_max = 40;
    ClusterDeltas stage;
    ASSERT_EQ(stage(group), Code::ok);
    EXPECT_EQ(group.trace.learns, 1u);
    EXPECT_LE(group.centers_1d.size(), 40u);
}

TEST(ClusterDeltas, ComesDownOneByOneAndStopsAtTheLowerLimit) {
    Group group = prepared(3, 256);  // 753 bits, of which one center alone needs 784
    group.centers_start_2 = 10;
    group.centers_min = 4;
    ClusterDeltas stage;
    ASSERT_EQ(stage(group), Code::ok) << "not to fit is no failure";
    EXPECT_FALSE(group.fits);
    EXPECT_EQ(group.trace.learns, 7u) << "10 down to 4";
    EXPECT_EQ(group.centers_1d.size(), 4u);
}

TEST(ClusterDeltas, FailsWithoutSamplesOrALearner) {
    ClusterDeltas stage;
    Group empty = group_of(5, {{}});
    EXPECT_EQ(stage(empty), Code::failure);
    Group group = prepared(8);
    stage.settings.implementation = "slow";
    EXPECT_EQ(stage(group), Code::failure);
    group.deltas.resize(3 * 512);
    stage.settings.implementation = "fast";
    EXPECT_EQ(stage(group), Code::failure);
}

TEST(ClusterDeltas, BothImplementationsFitWithAndWithoutMerging) {
    for (const char* const name : {"fast", "ref"})
        for (const bool allow_merge : {false, true}) {
            Group group = prepared(7);
            group.centers_max = 40;
            ClusterDeltas stage;
            stage.settings.implementation = name;
            stage.settings.allow_merge = allow_merge;
            ASSERT_EQ(stage(group), Code::ok);
            EXPECT_TRUE(group.fits);
        }
}

TEST(ClusterDeltas, WhatTheFilterDropsIsNotClustered) {
    Chain chain;
    Group best = group_of(8, {music(512, 1), music(512, 2)});
    Group worse = group_of(9, {music(512, 1), music(512, 2)});
    ASSERT_EQ(chain(best), Code::ok);
    ASSERT_EQ(chain(worse), Code::ok);
    ASSERT_LT(best.score, worse.score);
    Group above = group_of(10, {music(512, 1), music(512, 2)});
    EXPECT_EQ(chain(above), Code::filtered);
    EXPECT_EQ(above.trace.learns, 0u);
    chain.start_frame(best.frame.key);
    Group again = group_of(10, {music(512, 1), music(512, 2)});
    EXPECT_EQ(chain(again), Code::ok) << "the next frame knows nothing of it";
}

}  // namespace
}  // namespace vela::codec::v3::encode
