#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/Mixer.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

/// All deltas stand for center 0.
Group mixable(std::uint32_t b, std::initializer_list<std::vector<int>> channels) {
    Group group = group_of(b, channels);
    group.active = group.rescaled = group.origs;
    group.ixs.assign(group.size(), 0);
    group.centers_1d = {{0}};
    group.centers_2d = {{0, 0}};
    return group;
}

TEST(Mixer, ASingleChannelIsItsOwnMix) {
    Group group = mixable(5, {{1, -2, 3, 4}});
    ASSERT_TRUE(Mixer()(group));
    EXPECT_EQ(group.mixed, (std::vector<int>{1, -2, 3, 4}));
    EXPECT_TRUE(group.mix_seeds.empty());
    EXPECT_FALSE(group.overflow);
}

TEST(Mixer, SeedsGoByTheCountOfChannels) {
    Group two = mixable(5, {noise(8, 1, 99), noise(8, 2, 99)});
    ASSERT_TRUE(Mixer()(two));
    EXPECT_EQ(two.mix_seeds.size(), 2u);
    Group three = mixable(5, {noise(8, 1, 99), noise(8, 2, 99), noise(8, 3, 99)});
    ASSERT_TRUE(Mixer()(three));
    EXPECT_EQ(three.mix_seeds.size(), 5u);
}

TEST(Mixer, TellsWhatLeavesTheBitsThatAreLeft) {
    for (const std::uint32_t b : {3u, 12u, 23u}) {
        const int limit = 1 << (23 - b);
        for (const auto& [sample, overflows] :
             {std::pair(limit - 1, false), std::pair(limit, true), std::pair(-limit, false),
              std::pair(-limit - 1, true)}) {
            Group group = mixable(b, {{0, 0, sample, 0}});
            group.overflow = !overflows;
            ASSERT_TRUE(Mixer()(group));
            EXPECT_EQ(group.overflow, overflows) << sample;
        }
    }
    Group group = mixable(24, {{0, 0, 0, 0}});
    EXPECT_FALSE(Mixer()(group));
}

TEST(Mixer, AnOverflowOfTheSumIsToldAndNoFailure) {
    const std::vector<int> loud(8, 1 << 18);
    Group group = mixable(5, {loud, loud});
    ASSERT_TRUE(Mixer()(group));
    EXPECT_TRUE(group.overflow) << "2^19 does not fit into 19 bits";
    for (auto& frame : group.rescaled)
        frame = frame_of(frame.key.channel, std::vector<int>(8, (1 << 17) - 2));
    ASSERT_TRUE(Mixer()(group));
    EXPECT_FALSE(group.overflow) << "a retry looks anew";
}

TEST(Mixer, RefusesCountsThatDisagreeOrCannotBeMixed) {
    Group group = mixable(5, {noise(8, 1, 99), noise(8, 2, 99)});
    group.rescaled.pop_back();
    EXPECT_FALSE(Mixer()(group));
    group.active.clear();
    group.rescaled.clear();
    EXPECT_FALSE(Mixer()(group));
    Group four = mixable(5, {noise(8, 1, 99)});
    four.active.assign(4, four.origs[0]);
    four.rescaled = four.active;
    EXPECT_FALSE(Mixer()(four));
}

}  // namespace
}  // namespace vela::codec::v3::encode
