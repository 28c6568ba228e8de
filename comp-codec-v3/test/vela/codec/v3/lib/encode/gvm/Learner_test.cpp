#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encode/gvm/Factory.hpp>
#include <vela/codec/v3/lib/encode/gvm/Learner.hpp>

namespace vela::codec::v3::encode::gvm {
namespace {

Group group_for(const std::vector<int>& deltas, std::size_t per_sample) {
    return group_of(5, {std::vector<int>(deltas.size() / per_sample)});
}

/// Width of the centers when each delta has a cluster of its own.
unsigned center_bits(const std::vector<int>& deltas, bool force_origin = false) {
    Learner<2> learner("fast", deltas, false, force_origin, false);
    Group group = group_for(deltas, 1);
    EXPECT_TRUE(learner.learn(static_cast<unsigned>(deltas.size()), true));
    EXPECT_TRUE(learner.get_centers(group));
    EXPECT_EQ(group.budget.centers_bits, 8u * group.record.center_bits);
    return group.record.center_bits;
}

TEST(Learner, CentersAreAsWideAsTheLargestAndASign) {
    EXPECT_EQ(center_bits({0, 0, 0}), 2u) << "one bit at least";
    EXPECT_EQ(center_bits({1}), 2u);
    EXPECT_EQ(center_bits({-1, 0}), 2u);
    EXPECT_EQ(center_bits({2}), 3u);
    EXPECT_EQ(center_bits({3, -4}), 4u);
    EXPECT_EQ(center_bits({1000000}, true), 2u) << "the only center was moved to the origin";
}

TEST(Learner, NothingToLearnIsAFailure) {
    Learner<2> learner("fast", {}, false, false, true);
    EXPECT_TRUE(learner.valid());
    EXPECT_FALSE(learner.learn(3, true));
    EXPECT_EQ(learner.cost(), 0.0);
}

TEST(Learner, AnUnknownImplementationIsNotValid) {
    const auto learner = create("slow", 2, {1, 2, 3}, false, false, true);
    ASSERT_NE(learner, nullptr);
    EXPECT_FALSE(learner->valid());
    EXPECT_FALSE(learner->learn(2, true));
    Group group = group_for({1, 2, 3}, 1);
    std::vector<unsigned> sizes;
    EXPECT_FALSE(learner->get_ixs(group));
    EXPECT_FALSE(learner->get_centers(group));
    EXPECT_FALSE(learner->get_sizes(sizes));
    EXPECT_EQ(learner->cost(), 0.0);
}

TEST(Learner, OnlyTwoAndThreeChannelsCluster) {
    for (const unsigned nr_channels : {0u, 1u, 4u})
        EXPECT_EQ(create("fast", nr_channels, {1}, false, false, true), nullptr);
    EXPECT_NE(create("ref", 3, {1, 1}, false, false, true), nullptr);
}

TEST(Learner, IndicesComeBackInTimeOrder) {
    std::vector<int> deltas(300);
    for (std::size_t t = 0; t < deltas.size(); ++t)
        deltas[t] = static_cast<int>(t % 3) * 1000;
    for (const bool randomize : {false, true}) {
        Learner<2> learner("fast", deltas, false, false, randomize);
        Group group = group_for(deltas, 1);
        ASSERT_TRUE(learner.learn(10, true));
        ASSERT_TRUE(learner.get_ixs(group) && learner.get_centers(group));
        for (std::size_t t = 0; t < deltas.size(); ++t)
            EXPECT_EQ(group.centers_1d[group.ixs[t]][0], deltas[t]);
    }
}

TEST(Learner, PairsStayTogether) {
    std::vector<int> deltas;
    for (int t = 0; t < 200; ++t)
        deltas.insert(deltas.end(), {t % 4 * 100, t % 4 * -7});
    Learner<3> learner("fast", deltas, false, false, true);
    Group group = group_for(deltas, 2);
    ASSERT_TRUE(learner.learn(10, true));
    ASSERT_TRUE(learner.get_ixs(group) && learner.get_centers(group));
    for (std::size_t t = 0; t < 200; ++t)
        EXPECT_EQ(group.centers_2d[group.ixs[t]], (std::array{deltas[2 * t], deltas[2 * t + 1]}));
    EXPECT_EQ(group.budget.centers_bits, 2 * 8 * 10u) << "300 and a sign, twice eight places";
}

TEST(Learner, FewerClustersAreMergedAndMoreAreLearntAnew) {
    const auto deltas = noise(400, 3, 5000);
    Learner<2> merged("fast", deltas, false, false, false);
    ASSERT_TRUE(merged.learn(20, true));
    const double cost_of_20 = merged.cost();
    ASSERT_TRUE(merged.learn(10, true));
    EXPECT_GT(merged.cost(), cost_of_20);
    ASSERT_TRUE(merged.learn(20, true));
    EXPECT_EQ(merged.cost(), cost_of_20);

    Learner<2> anew("fast", deltas, false, false, false);
    ASSERT_TRUE(anew.learn(10, false));
    ASSERT_TRUE(merged.learn(10, true));
    EXPECT_NE(anew.cost(), merged.cost());
}

TEST(Learner, SizesGoDownAndAddUp) {
    const auto deltas = noise(400, 4, 300);
    Learner<2> learner("fast", deltas, false, false, true);
    ASSERT_TRUE(learner.learn(30, true));
    std::vector<unsigned> sizes;
    ASSERT_TRUE(learner.get_sizes(sizes));
    EXPECT_TRUE(std::ranges::is_sorted(sizes, std::greater()));
    EXPECT_EQ(std::accumulate(sizes.begin(), sizes.end(), 0u), 400u);
}

TEST(BestOrigin, OfOneDimensionIsTheSmallestMagnitude) {
    Learner<2>::Centers centers{{5}, {-3}, {3}, {9}};
    EXPECT_EQ(Learner<2>::find_best_origin_(centers) - centers.begin(), 1);
    centers = {{INT32_MIN}};
    EXPECT_EQ(Learner<2>::find_best_origin_(centers), centers.begin());
    centers.clear();
    EXPECT_EQ(Learner<2>::find_best_origin_(centers), centers.end());
}

// The second coordinate counts unsquared, and a negative one in favour: carriers depend on it.
TEST(BestOrigin, OfTwoDimensionsIsNoDistance) {
    Learner<3>::Centers centers{{0, 0}, {1, -100}, {-1, -100}};
    EXPECT_EQ(Learner<3>::find_best_origin_(centers) - centers.begin(), 1);
    centers = {{3, 1}, {2, 3}, {0, 6}};
    EXPECT_EQ(Learner<3>::find_best_origin_(centers) - centers.begin(), 1) << "11, 10, 12";
}

}  // namespace
}  // namespace vela::codec::v3::encode::gvm
