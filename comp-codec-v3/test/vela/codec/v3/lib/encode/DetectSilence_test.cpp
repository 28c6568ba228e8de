#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/DetectSilence.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

std::size_t nr_active(Group& group) {
    EXPECT_TRUE(DetectSilence()(group));
    return group.active.size();
}

TEST(DetectSilence, WhatTheBitlinesDrownIsSilent) {
    for (const std::uint32_t b : {3u, 5u, 12u}) {
        const int edge = 1 << b;
        Group silent = group_of(b, {{0, edge, -edge, 1}});
        EXPECT_EQ(nr_active(silent), 1u);
        EXPECT_EQ(silent.silence.size(), 4u) << "plus and minus 2^b are still silent";

        for (const int loud : {edge + 1, -edge - 1}) {
            Group active = group_of(b, {{0, 0, loud, 0}});
            EXPECT_EQ(nr_active(active), 1u);
            EXPECT_EQ(active.silence.size(), 0u);
        }
    }
}

TEST(DetectSilence, KeepsTheOrderAndDropsTheSilentOnes) {
    Group group = group_of(4, {{0, 99, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, -99}});
    EXPECT_EQ(nr_active(group), 2u);
    EXPECT_EQ(group.active[0].key, group.origs[0].key);
    EXPECT_EQ(group.active[1].key, group.origs[2].key);
    EXPECT_EQ(group.active[0].samples().data(), group.origs[0].samples().data());
}

TEST(DetectSilence, SeedsGoByTheChannelsThatAreMixed) {
    const std::vector<int> loud{99, 99, 99, 99};
    const std::vector<int> quiet{0, 0, 0, 0};
    Group none = group_of(4, {quiet, quiet, quiet});
    Group one = group_of(4, {loud, quiet, quiet});
    Group two = group_of(4, {loud, quiet, loud});
    Group three = group_of(4, {loud, loud, loud});
    const std::pair<Group*, unsigned> cases[] = {{&none, 0}, {&one, 0}, {&two, 64}, {&three, 160}};
    for (const auto& [group, bits] : cases) {
        nr_active(*group);
        EXPECT_EQ(group->budget.seed_bits, bits);
    }
}

TEST(DetectSilence, StandsInForTheFirstChannelWhenAllAreSilent) {
    Group group = group_of(4, {{1, 1, 1, 1}, {0, 0, 0, 0}});
    EXPECT_EQ(nr_active(group), 1u);
    EXPECT_EQ(group.active[0].key, group.origs[0].key);
    EXPECT_EQ(samples_of(group.active[0]), (std::vector<int>{0, 0, 0, 0}));
}

TEST(DetectSilence, RefusesNoChannelsAndTooMany) {
    Group group = group_of(4, {{99, 99}, {99, 99}, {99, 99}});
    group.origs.push_back(group.origs[0]);
    EXPECT_FALSE(DetectSilence()(group));
    group.origs.clear();
    EXPECT_FALSE(DetectSilence()(group));
}

}  // namespace
}  // namespace vela::codec::v3::encode
