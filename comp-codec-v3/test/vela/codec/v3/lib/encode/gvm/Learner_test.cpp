#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <thread>
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
    for (const char* implementation : {"fast", "ref"})
        for (const unsigned nr_channels : {2u, 3u})
            for (const bool allow_merge : {true, false}) {
                SCOPED_TRACE(testing::Message() << implementation << nr_channels << allow_merge);
                const auto learner = create(implementation, nr_channels, {}, false, false, true);
                ASSERT_NE(learner, nullptr);
                EXPECT_TRUE(learner->valid());
                EXPECT_FALSE(learner->learn(3, allow_merge));
                EXPECT_EQ(learner->cost(), 0.0);
            }
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

using Order = std::vector<int>;

/// The order in which the next shuffled learner sees eight deltas: as many clusters, one each, come
/// in the order of their making.
template <unsigned M>
Order next_order(bool randomize = true) {
    Order deltas;
    for (int t = 0; t < 8; ++t)
        deltas.insert(deltas.end(), M - 1, 10 * t);
    Learner<M> learner("ref", deltas, false, false, randomize);
    Group group = group_for(deltas, M - 1);
    EXPECT_TRUE(learner.learn(8, true) && learner.get_centers(group));
    Order order;
    for (const auto& center : group.centers_1d)
        order.push_back(center[0]);
    for (const auto& center : group.centers_2d)
        order.push_back(center[0]);
    return order;
}

const Order first_order{60, 30, 40, 20, 0, 70, 50, 10};
const Order second_order{50, 70, 0, 60, 10, 20, 40, 30};

/// Whether a process that has made no learner yet shuffles as carriers have always been made: one
/// engine for mixes of two and one for mixes of three, and neither moves for a learner in order.
int shuffles_as_ever() {
    const bool ok = next_order<2>(false) == Order{0, 10, 20, 30, 40, 50, 60, 70} &&
                    next_order<2>() == first_order && next_order<3>(false).size() == 8 &&
                    next_order<3>() == first_order && next_order<2>() == second_order &&
                    next_order<3>() == second_order;
    return ok ? 0 : 1;
}

// The engines live as long as the process: the test needs a fresh one.
TEST(LearnerDeathTest, TheFirstShufflesOfAProcessAreFixed) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(shuffles_as_ever()), testing::ExitedWithCode(0), "");
}

TEST(LearnerThreads, ShareTheEngineWithoutHarm) {
    std::vector<std::thread> threads;
    std::array<Order, 8> orders;
    for (Order& order : orders)
        threads.emplace_back([&order] { order = next_order<3>(); });
    for (auto& thread : threads)
        thread.join();
    for (Order order : orders) {
        std::ranges::sort(order);
        EXPECT_EQ(order, (Order{0, 10, 20, 30, 40, 50, 60, 70})) << "a whole permutation each";
    }
}

TEST(Learner, WithoutMergingEveryCountIsLearntAnew) {
    const auto deltas = noise(300, 5, 5000);
    for (const char* const name : {"fast", "ref"}) {
        Learner<2> fresh(name, deltas, false, false, false);
        Learner<2> used(name, deltas, false, false, false);
        ASSERT_TRUE(fresh.learn(9, false));
        ASSERT_TRUE(used.learn(20, false));
        ASSERT_TRUE(used.learn(9, false));
        EXPECT_EQ(used.cost(), fresh.cost());
    }
}

TEST(Learner, BothImplementationsTakePairsAndTellAll) {
    const auto deltas = noise(400, 6, 300);
    for (const char* const name : {"fast", "ref"}) {
        const auto learner = create(name, 3, deltas, true, true, true);
        ASSERT_TRUE(learner->learn(12, true));
        Group group = group_for(deltas, 2);
        std::vector<unsigned> sizes;
        ASSERT_TRUE(learner->get_ixs(group) && learner->get_centers(group) &&
                    learner->get_sizes(sizes));
        EXPECT_NE(std::ranges::find(group.centers_2d, std::array{0, 0}), group.centers_2d.end())
            << "the center nearest to the origin was moved there";
        EXPECT_EQ(group.budget.centers_bits, 2u * 12 * group.record.center_bits);
        ASSERT_EQ(group.ixs.size(), 200u);
        for (std::size_t i = 0; i < sizes.size(); ++i)
            EXPECT_EQ(std::ranges::count(group.ixs, i), sizes[i]);
    }
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
