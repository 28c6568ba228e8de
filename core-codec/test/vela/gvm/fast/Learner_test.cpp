#include <gtest/gtest.h>

#include <vector>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Learner.hpp>

namespace vela::gvm::fast {
namespace {

using Ixs = std::vector<unsigned long>;
using Sizes = std::vector<unsigned>;

/// A learner that is told its deltas as a list of numbers.
template <std::size_t N>
struct Learned : Learner<double, Iterator<N>> {
    explicit Learned(unsigned k, std::vector<int> values, bool update_all = true) {
        this->set_update_all_after_insert(update_all);
        nr_deltas = values.size() / N;
        good = this->learn(k, range_of<N>(values));
    }

    Sizes sizes() const {
        Sizes result(this->nr_clusters());
        EXPECT_TRUE(this->get_sizes(result));
        return result;
    }
    std::vector<std::array<int, N>> centers() const {
        std::vector<std::array<int, N>> result(this->nr_clusters());
        EXPECT_TRUE(this->get_centers(result));
        return result;
    }
    Ixs ixs() const {
        Ixs result(nr_deltas);
        EXPECT_TRUE(this->get_ixs(result));
        return result;
    }

    std::size_t nr_deltas = 0;
    bool good = false;
};

using Centers1 = std::vector<std::array<int, 1>>;
using Centers2 = std::vector<std::array<int, 2>>;

TEST(FastLearner, IdenticalDeltasStayOneCluster) {
    const Learned<1> one(10, std::vector<int>(7, -3));
    EXPECT_EQ(one.sizes(), Sizes{7});
    EXPECT_EQ(one.centers(), Centers1{{-3}});
    EXPECT_EQ(one.cost(), 0);
    const Learned<2> two(10, {4, -9, 4, -9, 4, -9});
    EXPECT_EQ(two.sizes(), Sizes{3});
    EXPECT_EQ(two.centers(), (Centers2{{4, -9}}));
    EXPECT_EQ(two.cost(), 0);
}

TEST(FastLearner, CapacityOfOneTakesEveryDeltaIntoOneCluster) {
    const Learned<1> learned(1, {1, 100, -50, 7});
    EXPECT_EQ(learned.sizes(), Sizes{4});
    EXPECT_EQ(learned.centers(), Centers1{{14}});  // 58 / 4
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 0, 0}));
}

TEST(FastLearner, AClusterThatOutgrowsItsNeighbourTakesItsIndex) {
    EXPECT_EQ(Learned<1>(2, {0, 100}).ixs(), (Ixs{0, 1}));
    const Learned<1> learned(2, {0, 100, 100});
    EXPECT_EQ(learned.sizes(), (Sizes{2, 1}));
    EXPECT_EQ(learned.centers(), (Centers1{{100}, {0}}));
    EXPECT_EQ(learned.ixs(), (Ixs{1, 0, 0}));
}

TEST(FastLearner, ClustersOfEqualSizeKeepTheirOrder) {
    const Learned<1> learned(3, {0, 100, 200, 200, 100});
    EXPECT_EQ(learned.centers(), (Centers1{{200}, {100}, {0}}));
    const Learned<1> other(3, {0, 100, 200, 100, 200});
    EXPECT_EQ(other.centers(), (Centers1{{100}, {200}, {0}}));
}

// 14 costs 8 at 10 (alone, distance 4), and 8 at 17 (eight deltas, distance 3).
TEST(FastLearner, ATieOfAddCostsGoesToTheLargerCluster) {
    const Learned<1> learned(3, {1000, 10, 17, 17, 17, 17, 17, 17, 17, 17, 14});
    EXPECT_EQ(learned.sizes(), (Sizes{9, 1, 1}));
    EXPECT_EQ(learned.ixs().back(), 0u);
}

// Position 0 is looked at before all others, also when it is not the largest.
TEST(FastLearner, ATieOfAddCostsGoesToTheFirstClusterOfAll) {
    const Learned<1> learned(3, {10, 1000, 17, 17, 17, 17, 17, 17, 17, 17, 14});
    EXPECT_EQ(learned.sizes(), (Sizes{8, 2, 1}));
    EXPECT_EQ(learned.ixs().back(), learned.ixs().front());
}

TEST(FastLearner, ADeltaAsCostlyAsTheBestMergeIsInserted) {
    const Learned<1> equal(2, {0, 4, 8});  // both cost 8
    EXPECT_EQ(equal.sizes(), (Sizes{2, 1}));
    EXPECT_EQ(equal.ixs(), (Ixs{1, 0, 0}));
    const Learned<1> above(2, {0, 4, 9});
    EXPECT_EQ(above.sizes(), (Sizes{2, 1}));
    EXPECT_EQ(above.ixs(), (Ixs{0, 0, 1}));
}

TEST(FastLearner, ADeltaOnACenterNeverTakesAFreePlace) {
    const Learned<2> learned(5, {0, 0, 8, 6, 0, 0, 8, 6, 8, 6});
    EXPECT_EQ(learned.sizes(), (Sizes{3, 2}));
    EXPECT_EQ(learned.ixs(), (Ixs{1, 0, 1, 0, 0}));
}

TEST(FastLearner, FewerDeltasThanClustersAreFine) {
    const Learned<1> learned(200, {5, 6, 5, 9});
    EXPECT_TRUE(learned.good);
    EXPECT_EQ(learned.sizes(), (Sizes{2, 1, 1}));
}

TEST(FastLearner, ACapacityBeyondAllMemoryIsNoneAtAll) {
    const Learned<1> learned(4294967295u, {5, 6, 5, 9});
    EXPECT_TRUE(learned.good);
    EXPECT_EQ(learned.ixs(), Learned<1>(4, {5, 6, 5, 9}).ixs());
}

TEST(FastLearner, NoDeltasGiveNoClusters) {
    for (const unsigned k : {0u, 1u, 5u}) {
        Learned<2> learned(k, {});
        EXPECT_TRUE(learned.good);
        EXPECT_EQ(learned.nr_clusters(), 0u);
        EXPECT_EQ(learned.cost(), 0.0);
        EXPECT_EQ(learned.ixs(), Ixs{});
        EXPECT_FALSE(learned.merge_two_clusters());
    }
}

TEST(FastLearner, ACapacityOfZeroFailsAtTheFirstDelta) {
    EXPECT_FALSE(Learned<1>(0, {1}).good);
}

TEST(FastLearner, MergesDownToOneClusterAndNoFurther) {
    Learned<2> learned(4, {0, 0, 10, 2, 50, 60, 7, 7, 3, 1});
    for (unsigned left = 3; left >= 1; --left) {
        EXPECT_TRUE(learned.merge_two_clusters());
        EXPECT_EQ(learned.nr_clusters(), left);
    }
    EXPECT_EQ(learned.sizes(), Sizes{5});
    EXPECT_EQ(learned.centers(), (Centers2{{14, 14}}));  // sums of 70
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 0, 0, 0}));
    EXPECT_FALSE(learned.merge_two_clusters());
    EXPECT_EQ(learned.sizes(), Sizes{5});
}

// 100 and 101 stand at the last two positions: nothing moves.
TEST(FastLearner, MergingTheLastPositionLeavesTheOthersInPlace) {
    Learned<1> learned(4, {0, 50, 100, 101});
    EXPECT_TRUE(learned.merge_two_clusters());
    EXPECT_EQ(learned.sizes(), (Sizes{2, 1, 1}));
    EXPECT_EQ(learned.ixs(), (Ixs{1, 2, 0, 0}));
}

// 0 and 1 stand at the first two positions: the last cluster takes the place that falls free.
TEST(FastLearner, MergingAnotherPositionMovesTheLastCluster) {
    Learned<1> learned(4, {0, 1, 50, 100});
    EXPECT_TRUE(learned.merge_two_clusters());
    EXPECT_EQ(learned.sizes(), (Sizes{2, 1, 1}));
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 1, 2}));
    EXPECT_EQ(learned.centers(), (Centers1{{0}, {50}, {100}}));
}

// 10 remembers 7, the first of two as near.  After 6 has joined 7, the cheaper partner is 13.
TEST(FastLearner, OnlyUpdateAllChoosesAnotherPartnerAfterAnInsert) {
    const std::vector<int> values{7, 13, 10, 6, 1};
    EXPECT_EQ(Learned<1>(3, values, true).ixs(), (Ixs{0, 1, 1, 0, 2}));   // 10 with 13
    EXPECT_EQ(Learned<1>(3, values, false).ixs(), (Ixs{0, 1, 0, 0, 2}));  // 10 with 7
}

TEST(FastLearner, CentersAreCutTowardZero) {
    EXPECT_EQ(Learned<1>(1, {-3, -4}).centers(), Centers1{{-3}});
    EXPECT_EQ(Learned<1>(1, {3, 4}).centers(), Centers1{{3}});
}

// The sum is cut to 32 bits first: outside, that gives the smallest integer.
TEST(FastLearner, SumsBeyond32BitsGiveTheSmallestIntegerOverTheCount) {
    EXPECT_EQ(Learned<1>(1, {2147483647, 1}).centers(), Centers1{{-1073741824}});
    EXPECT_EQ(Learned<1>(1, {2147483646, 1}).centers(), Centers1{{1073741823}});
}

TEST(FastLearner, LearningAgainForgetsTheFirstDeltas) {
    Learned<1> learned(3, {1, 2, 3, 4, 5});
    std::vector<int> values{9, 9};
    EXPECT_TRUE(learned.learn(3, range_of<1>(values)));
    learned.nr_deltas = 2;
    EXPECT_EQ(learned.sizes(), Sizes{2});
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0}));
}

TEST(FastLearner, KnowsNothingBeforeItLearns) {
    Learner<double, Iterator<1>> learner;
    EXPECT_EQ(learner.nr_clusters(), 0u);
    EXPECT_EQ(learner.cost(), 0.0);
    EXPECT_FALSE(learner.merge_two_clusters());
    Sizes sizes;
    Centers1 centers;
    Ixs ixs;
    EXPECT_FALSE(learner.get_sizes(sizes));
    EXPECT_FALSE(learner.get_centers(centers));
    EXPECT_FALSE(learner.get_ixs(ixs));
}

TEST(FastLearner, RefusesVectorsOfAnotherSize) {
    const Learned<1> learned(2, {1, 2, 3});
    Sizes sizes(3);
    Centers1 centers(1);
    Ixs ixs(4);
    EXPECT_FALSE(learned.get_sizes(sizes));
    EXPECT_FALSE(learned.get_centers(centers));
    EXPECT_FALSE(learned.get_ixs(ixs));
}

}  // namespace
}  // namespace vela::gvm::fast
