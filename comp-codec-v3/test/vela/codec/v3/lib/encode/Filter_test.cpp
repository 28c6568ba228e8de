#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/Filter.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

Group scored(std::uint32_t b, double score) {
    Group group = group_of(b, {{0, 0, 0, 0}});
    group.score = score;
    group.has_score = true;
    return group;
}

TEST(Filter, LowerScoresAreBetterAndCarriersApart) {
    Filter filter;
    EXPECT_EQ(filter.check(scored(3, 0)), 0);
    // A perfect group has -3000 dB.
    ASSERT_TRUE(filter.update(scored(9, -3000)));
    ASSERT_TRUE(filter.update(scored(5, -80)));
    EXPECT_EQ(filter.check(scored(4, 0)), 2);
    EXPECT_EQ(filter.check(scored(5, 0)), 0);

    ASSERT_TRUE(filter.update(scored(7, -2999)));
    EXPECT_EQ(filter.check(scored(6, 0)), 2) << "the perfect one is still the better";
    Filter reversed;
    ASSERT_TRUE(reversed.update(scored(9, -2999)));
    ASSERT_TRUE(reversed.update(scored(5, -3000)));
    EXPECT_EQ(reversed.check(scored(10, 0)), 2);
    EXPECT_EQ(reversed.check(scored(4, 0)), 0);

    Group other = scored(4, 0);
    other.frame.key = api::ChannelVariant(api::channel::Right);
    EXPECT_EQ(filter.check(other), 0);
}

TEST(Filter, RefusesWhatHasNoScoreAndForgets) {
    Filter filter;
    Group group = scored(5, -80);
    group.has_score = false;
    EXPECT_FALSE(filter.update(group));

    ASSERT_TRUE(filter.update(scored(9, -90)));
    ASSERT_TRUE(filter.update(scored(5, -80)));
    filter.clear(group.frame.key);
    EXPECT_EQ(filter.check(scored(4, 0)), 0);
}

TEST(Filter, BracketsEachFrameByItsOwnScoresAlone) {
    Filter filter;
    for (int frame = 0; frame < 3; ++frame) {
        ASSERT_TRUE(filter.update(scored(5, -80)));
        EXPECT_EQ(filter.check(scored(3, 0)), 0);
        EXPECT_EQ(filter.check(scored(12, 0)), 0) << "one score is no bracket";
        ASSERT_TRUE(filter.update(scored(9, -90)));
        EXPECT_EQ(filter.check(scored(3, 0)), 2);
        filter.clear(scored(3, 0).frame.key);
    }
}

// They begin their frames each when it is through with the one before.
TEST(Filter, ForgetsOneCarrierAlone) {
    Filter filter;
    const auto dropped = [&](const api::Channel& carrier) {
        Group group = scored(4, 0);
        group.frame.key = api::ChannelVariant(carrier);
        return filter.check(group) != 0;
    };
    for (const auto& carrier : {api::channel::Left, api::channel::Right})
        for (const auto& [b, score] : {std::pair(9, -90), std::pair(5, -80)}) {
            Group group = scored(static_cast<std::uint32_t>(b), score);
            group.frame.key = api::ChannelVariant(carrier);
            ASSERT_TRUE(filter.update(group));
        }
    ASSERT_TRUE(dropped(api::channel::Left) && dropped(api::channel::Right));
    filter.clear(api::ChannelVariant(api::channel::Left));
    EXPECT_FALSE(dropped(api::channel::Left));
    EXPECT_TRUE(dropped(api::channel::Right));
}

}  // namespace
}  // namespace vela::codec::v3::encode
