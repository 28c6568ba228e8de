#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>
#include <vela/fixed_width/bit_width.hpp>
#include <vela/gvm/Learned.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Learner.hpp>

namespace vela::gvm::fast {
namespace {

template <std::size_t N>
using Learned = gvm::Learned<Learner<double, Iterator<N>>, N>;

TEST(FastLearner, IdenticalDeltasStayOneCluster) {
    const Learned<1> one(10, std::vector<int>(7, -3));
    EXPECT_EQ(one.sizes(), Sizes{7});
    EXPECT_EQ(one.centers(), Centers<1>{{-3}});
    EXPECT_EQ(one.cost(), 0);
    const Learned<2> two(10, {4, -9, 4, -9, 4, -9});
    EXPECT_EQ(two.sizes(), Sizes{3});
    EXPECT_EQ(two.centers(), (Centers<2>{{4, -9}}));
    EXPECT_EQ(two.cost(), 0);
}

TEST(FastLearner, CapacityOfOneTakesEveryDeltaIntoOneCluster) {
    const Learned<1> learned(1, {1, 100, -50, 7});
    EXPECT_EQ(learned.sizes(), Sizes{4});
    EXPECT_EQ(learned.centers(), Centers<1>{{14}});  // 58 / 4
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 0, 0}));
}

TEST(FastLearner, AClusterThatOutgrowsItsNeighbourTakesItsIndex) {
    EXPECT_EQ(Learned<1>(2, {0, 100}).ixs(), (Ixs{0, 1}));
    const Learned<1> learned(2, {0, 100, 100});
    EXPECT_EQ(learned.sizes(), (Sizes{2, 1}));
    EXPECT_EQ(learned.centers(), (Centers<1>{{100}, {0}}));
    EXPECT_EQ(learned.ixs(), (Ixs{1, 0, 0}));
}

TEST(FastLearner, ClustersOfEqualSizeKeepTheirOrder) {
    const Learned<1> learned(3, {0, 100, 200, 200, 100});
    EXPECT_EQ(learned.centers(), (Centers<1>{{200}, {100}, {0}}));
    const Learned<1> other(3, {0, 100, 200, 100, 200});
    EXPECT_EQ(other.centers(), (Centers<1>{{100}, {200}, {0}}));
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
    const Learned<1> learned(0, {1});
    EXPECT_FALSE(learned.good);
    Ixs ixs(1);
    EXPECT_FALSE(learned.get_ixs(ixs));
}

TEST(FastLearner, MergesDownToOneClusterAndNoFurther) {
    Learned<2> learned(4, {0, 0, 10, 2, 50, 60, 7, 7, 3, 1});
    for (unsigned left = 3; left >= 1; --left) {
        EXPECT_TRUE(learned.merge_two_clusters());
        EXPECT_EQ(learned.nr_clusters(), left);
    }
    EXPECT_EQ(learned.sizes(), Sizes{5});
    EXPECT_EQ(learned.centers(), (Centers<2>{{14, 14}}));  // sums of 70
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
    EXPECT_EQ(learned.centers(), (Centers<1>{{0}, {50}, {100}}));
}

// 10 remembers 7, the first of two as near.  After 6 has joined 7, the cheaper partner is 13.
TEST(FastLearner, OnlyUpdateAllChoosesAnotherPartnerAfterAnInsert) {
    const std::vector<int> values{7, 13, 10, 6, 1};
    EXPECT_EQ(Learned<1>(3, values, true).ixs(), (Ixs{0, 1, 1, 0, 2}));   // 10 with 13
    EXPECT_EQ(Learned<1>(3, values, false).ixs(), (Ixs{0, 1, 0, 0, 2}));  // 10 with 7
}

TEST(FastLearner, CentersAreCutTowardZero) {
    EXPECT_EQ(Learned<1>(1, {-3, -4}).centers(), Centers<1>{{-3}});
    EXPECT_EQ(Learned<1>(1, {3, 4}).centers(), Centers<1>{{3}});
}

// The sum is cut to 32 bits first: outside, that gives the smallest integer.
TEST(FastLearner, SumsBeyond32BitsGiveTheSmallestIntegerOverTheCount) {
    EXPECT_EQ(Learned<1>(1, {2147483647, 1}).centers(), Centers<1>{{-1073741824}});
    EXPECT_EQ(Learned<1>(1, {2147483646, 1}).centers(), Centers<1>{{1073741823}});
}

/// What centers need as they are, whatever a quicker look tells.
template <std::size_t N>
void width_is_that_of_the_centers(unsigned k, const std::vector<int>& values) {
    const Learned<N> learned(k, values);
    unsigned width = 99;
    ASSERT_TRUE(learned.get_center_width(width));
    EXPECT_EQ(width, fixed_width::bit_width(learned.centers()))
        << "k " << k << " values " << testing::PrintToString(values);
}

// Means just below a power of two look like it in single precision.
TEST(FastLearner, TheWidthOfCentersIsExactNearPowersOfTwo) {
    for (int bits = 0; bits < 31; ++bits)
        for (const int off : {-2, -1, 0, 1, 2})
            for (const int sign : {-1, 1})
                for (const std::size_t count : {1u, 2u, 3u, 7u, 100u}) {
                    const int value = sign * ((1 << bits) - 1 + off);
                    std::vector<int> values(2 * count, value);
                    values.back() -= sign;
                    width_is_that_of_the_centers<1>(1, values);
                    width_is_that_of_the_centers<1>(2, values);
                    width_is_that_of_the_centers<2>(1, values);
                    if (HasFailure()) return;
                }
}

// Cut first and divided then, such a sum gives a center that is no mean.
TEST(FastLearner, TheWidthOfCentersIsExactWhereSumsLeave32Bits) {
    constexpr int largest = 2147483647, smallest = -largest - 1, half = 1 << 30;
    const std::vector<int> table[] = {{largest, largest, largest},
                                      {smallest},
                                      {smallest, smallest, smallest},
                                      {half, half},
                                      {half, half - 1},
                                      {-half, -half},
                                      {-half, -half - 1},
                                      {half, half, 1, -3},
                                      {largest, largest, 0, 0, 0, 0},
                                      {smallest, 0, smallest, 1, largest, 2},
                                      {0, half, 0, half, 5, half, 5, 0}};
    for (const auto& values : table)
        for (const unsigned k : {1u, 2u}) {
            width_is_that_of_the_centers<1>(k, values);
            if (values.size() % 2 == 0) width_is_that_of_the_centers<2>(k, values);
        }
    for (const int value : {1 << 21, (1 << 21) + 1, (1 << 21) - 1, -(1 << 21), -(1 << 21) - 1})
        width_is_that_of_the_centers<1>(1, std::vector<int>(1024, value));
}

TEST(FastLearner, CentersOfNothingHaveNoWidth) {
    width_is_that_of_the_centers<1>(3, {});
    width_is_that_of_the_centers<2>(3, {});
    width_is_that_of_the_centers<1>(0, {1});
    width_is_that_of_the_centers<1>(3, {0, 0});
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
    { const Learned<1> gone(3, {1, 2, 3}); }  // leaves its memory to the next
    Learner<double, Iterator<1>> learner;
    unsigned width = 0;
    EXPECT_FALSE(learner.get_center_width(width));
    EXPECT_EQ(learner.nr_clusters(), 0u);
    EXPECT_EQ(learner.cost(), 0.0);
    EXPECT_FALSE(learner.merge_two_clusters());
    Sizes sizes;
    Centers<1> centers;
    Ixs ixs;
    EXPECT_FALSE(learner.get_sizes(sizes));
    EXPECT_FALSE(learner.get_centers(centers));
    EXPECT_FALSE(learner.get_ixs(ixs));
}

// A learner may end on another thread than it began on, and leaves its memory there.
TEST(FastLearner, EachThreadKeepsWhatItsLearnersLeave) {
    const auto learn = [](int seed) {
        const auto values = audio_like_values(6, 40, static_cast<unsigned>(seed));
        return std::make_unique<Learned<1>>(3, values);
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, begun = learn(t), t]() mutable {
            const Ixs expected = begun->ixs();
            for (int round = 0; round < 2000; ++round) {
                begun.reset();
                const auto other = learn(100 + round);
                begun = learn(t);
                EXPECT_EQ(begun->ixs(), expected);
            }
        });
    for (auto& thread : threads)
        thread.join();
}

TEST(FastLearner, RefusesVectorsOfAnotherSize) {
    const Learned<1> learned(2, {1, 2, 3});
    Sizes sizes(3);
    Centers<1> centers(1);
    Ixs ixs(4);
    EXPECT_FALSE(learned.get_sizes(sizes));
    EXPECT_FALSE(learned.get_centers(centers));
    EXPECT_FALSE(learned.get_ixs(ixs));
}

}  // namespace
}  // namespace vela::gvm::fast
