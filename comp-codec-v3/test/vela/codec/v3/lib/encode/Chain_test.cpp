#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

using Code = Chain::Code;

// Unrelated noise of three channels is predicted so badly that the mix overshoots what the limiter
// made room for.
TEST(Chain, AttenuatesByOneStepUntilTheMixFits) {
    int nr_retried = 0;
    for (unsigned seed = 0; seed < 20; ++seed) {
        const auto channel = [&](unsigned which) { return noise(256, 3 * seed + which, 0x7FFFFF); };
        Group group = group_of(10, {channel(0), channel(1), channel(2)});
        Chain chain;
        ASSERT_EQ(chain(group), Code::ok);
        EXPECT_FALSE(group.overflow);
        if (group.trace.retries == 0) continue;
        ++nr_retried;

        Group limited = group_of(10, {channel(0), channel(1), channel(2)});
        ASSERT_TRUE(chain.detect_silence(limited) && chain.rescaler(limited));
        EXPECT_EQ(group.scaler_ix, limited.scaler_ix + group.trace.retries);
    }
    EXPECT_GT(nr_retried, 0);
}

// What an attempt that overflows has scored stands for the same count of bit-lines too.
TEST(Chain, AttemptsThatOverflowFeedTheFilter) {
    Group once = group_of(10, {noise(256, 1)});
    Chain single;
    ASSERT_EQ(single(once), Code::ok);
    ASSERT_EQ(once.trace.retries, 0u);

    Chain chain;
    bool retried = false;
    for (unsigned seed = 0; !retried && seed < 20; ++seed) {
        const auto channel = [&](unsigned which) {
            return noise(1024, 3 * seed + which, 0x7FFFFF);
        };
        Group twice = group_of(10, {channel(0), channel(1), channel(2)});
        chain.start_frame(twice.frame.key);
        ASSERT_EQ(chain(twice), Code::ok);
        retried = twice.has_score && twice.trace.retries != 0;
    }
    ASSERT_TRUE(retried);

    const auto nr_dropped = [](const Chain& of) {
        int dropped = 0;
        for (const std::uint32_t b : {9u, 10u, 11u})
            if (of.compute_quality.filter->check(group_of(b, {{0}})) != 0) ++dropped;
        return dropped;
    };
    EXPECT_EQ(nr_dropped(single), 0) << "one point tells nothing of the others";
    EXPECT_EQ(nr_dropped(chain), 1) << "two points drop one side";
}

// Dropping ahead of the stages that would have been wasted must not be seen, failures included.
TEST(Chain, DropsTheSameCandidatesEarlyAndLate) {
    int nr_filtered = 0;
    for (const std::size_t size : {4u, 5u, 6u, 64u, 1024u})
        for (unsigned seed = 0; seed < 6; ++seed) {
            Chain early, late;
            late.drop_early = false;
            for (Chain* const chain : {&early, &late})  // the engine of the shuffles is shared
                chain->cluster_deltas.settings.randomize_deltas = false;
            for (const std::uint32_t b : {8u, 9u, 7u, 10u, 6u, 11u, 5u, 2u, 17u}) {
                const auto candidate = [&] {
                    return group_of(b, {music(size, seed), music(size, seed + 1)});
                };
                Group first = candidate(), second = candidate();
                const auto code = early(first);
                ASSERT_EQ(code, late(second)) << size << ' ' << seed << ' ' << b;
                ASSERT_EQ(first.has_score, second.has_score);
                ASSERT_TRUE(!first.has_score || first.score == second.score);
                nr_filtered += code == Code::filtered;
            }
        }
    EXPECT_GT(nr_filtered, 20);
}

TEST(Chain, StagesShareOneFilter) {
    const Chain chain;
    EXPECT_NE(chain.cluster_deltas.filter, nullptr);
    EXPECT_EQ(chain.compute_quality.filter, chain.cluster_deltas.filter);
}

TEST(Chain, GivesUpBehindTheStrongestAttenuation) {
    Group group = group_of(10, {noise(256, 1, 0x7FFFFF), noise(256, 2, 0x7FFFFF)});
    group.scaler_ix = 241;
    Chain chain;
    EXPECT_EQ(chain(group), Code::failure);
}

TEST(Chain, AFailedStageFailsTheCandidate) {
    Chain chain;
    Group no_channels = group_of(5, {{0, 0, 0, 0}});
    no_channels.origs.clear();
    EXPECT_EQ(chain(no_channels), Code::failure);
    Group no_bitlines = group_of(0, {{9, 9, 9, 9}});
    EXPECT_EQ(chain(no_bitlines), Code::failure);
    Group too_short = group_of(5, {{99, 99, 99}, {99, 99, 99}});
    EXPECT_EQ(chain(too_short), Code::failure);
}

}  // namespace
}  // namespace vela::codec::v3::encode
