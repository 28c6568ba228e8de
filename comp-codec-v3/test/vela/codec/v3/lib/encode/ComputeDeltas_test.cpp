#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/ComputeDeltas.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

Group rescaled(std::uint32_t b, std::initializer_list<std::vector<int>> channels) {
    Group group = group_of(b, channels);
    group.rescaled = group.origs;
    return group;
}

TEST(ComputeDeltas, OnePerSampleAndPredictedChannel) {
    for (const auto& [nr_channels, nr_deltas] :
         {std::pair(1, 0), std::pair(2, 8), std::pair(3, 16)}) {
        Group group = rescaled(5, {noise(8, 1), noise(8, 2), noise(8, 3)});
        group.rescaled.resize(static_cast<std::size_t>(nr_channels));
        EXPECT_TRUE(ComputeDeltas()(group));
        EXPECT_EQ(group.deltas.size(), static_cast<std::size_t>(nr_deltas));
    }
}

TEST(ComputeDeltas, TooFewSamplesToPredictInFail) {
    Group two = rescaled(5, {noise(3, 1), noise(3, 2)});
    EXPECT_FALSE(ComputeDeltas()(two));
    Group three = rescaled(5, {noise(5, 1), noise(5, 2), noise(5, 3)});
    EXPECT_FALSE(ComputeDeltas()(three));
    three.rescaled.clear();
    EXPECT_FALSE(ComputeDeltas()(three));
}

TEST(ComputeDeltas, TellsWhatThePredictionMisses) {
    // Anchors at the even samples of the first channel and the odd ones of the second.
    Group group = rescaled(5, {{0, 5, 8, 10, 12, 0}, {0, 10, 7, 20, 0, 40}});
    ASSERT_TRUE(ComputeDeltas()(group));
    EXPECT_EQ(group.deltas, (std::vector<int>{0, 5 - 4, 7 - 15, 10 - 10, 0 - 30, 0}));
}

TEST(ComputeDeltas, ARetryReplacesWhatWasThere) {
    Group group = rescaled(5, {noise(8, 1), noise(8, 2), noise(8, 3)});
    ASSERT_TRUE(ComputeDeltas()(group));
    group.rescaled.resize(1);
    ASSERT_TRUE(ComputeDeltas()(group));
    EXPECT_TRUE(group.deltas.empty());
}

}  // namespace
}  // namespace vela::codec::v3::encode
