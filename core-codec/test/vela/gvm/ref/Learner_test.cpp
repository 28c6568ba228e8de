#include <gtest/gtest.h>

#include <vector>
#include <vela/gvm/Learned.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/ref/Learner.hpp>

namespace vela::gvm::ref {
namespace {

template <std::size_t N>
using Learned = gvm::Learned<Learner<Iterator<N>>, N>;

TEST(RefLearner, OneClusterTakesEveryDelta) {
    const Learned<1> learned(1, {1, 100, -50, 7});
    EXPECT_EQ(learned.sizes(), Sizes{4});
    EXPECT_EQ(learned.centers(), Centers<1>{{14}});  // 58 / 4
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 0, 0}));
}

TEST(RefLearner, AsManyClustersAsDeltasCostNothing) {
    const Learned<2> learned(3, {1, 2, 8, 9, 1, 2});
    EXPECT_TRUE(learned.good);
    EXPECT_EQ(learned.sizes(), (Sizes{1, 1, 1}));
    EXPECT_EQ(learned.cost(), 0.0);
}

TEST(RefLearner, RefusesMoreClustersThanDeltasAndNoClusters) {
    EXPECT_FALSE(Learned<1>(3, {1, 2}).good);
    EXPECT_FALSE(Learned<1>(4294967295u, {1, 2}).good);
    EXPECT_FALSE(Learned<1>(0, {1, 2}).good);
    EXPECT_FALSE(Learned<1>(0, {}).good);
    EXPECT_FALSE(Learned<1>(1, {}).good);
}

TEST(RefLearner, ADeltaAsCostlyAsTheBestMergeIsAdded) {
    const Learned<1> equal(2, {0, 4, 8});  // both cost 8
    EXPECT_EQ(equal.centers(), (Centers<1>{{6}, {0}}));
    EXPECT_EQ(equal.ixs(), (Ixs{1, 0, 0}));
    const Learned<1> above(2, {0, 4, 9});
    EXPECT_EQ(above.centers(), (Centers<1>{{2}, {9}}));
    EXPECT_EQ(above.ixs(), (Ixs{0, 0, 1}));
}

TEST(RefLearner, ATieOfAddCostsGoesToTheFirstCluster) {
    const Learned<1> learned(2, {10, 20, 15});
    EXPECT_EQ(learned.ixs(), (Ixs{0, 1, 0}));
}

// The mean of -7 / 2 is cut, not floored.
TEST(RefLearner, CentersAreMeansCutTowardZero) {
    EXPECT_EQ(Learned<1>(1, {-3, -4}).centers(), Centers<1>{{-3}});
    // No sum is cut on the way: 2^31 / 2 fits.
    EXPECT_EQ(Learned<1>(1, {2147483647, 1}).centers(), Centers<1>{{1073741824}});
}

TEST(RefLearner, EqualDeltasApartMergeForNothing) {
    Learned<1> learned(3, {5, 70, 5});
    EXPECT_EQ(learned.sizes(), (Sizes{1, 1, 1}));
    EXPECT_TRUE(learned.merge_two_clusters());
    EXPECT_EQ(learned.cost(), 0.0);
    EXPECT_EQ(learned.sizes(), (Sizes{2, 1}));
    EXPECT_EQ(learned.ixs(), (Ixs{0, 1, 0}));
}

// 10 and 12 merge and become the largest cluster, which was the third before.
TEST(RefLearner, AMergeRenumbersByTheNewSizes) {
    Learned<1> learned(4, {100, 10, 200, 12, 100, 100, 200, 10});
    EXPECT_EQ(learned.sizes(), (Sizes{3, 2, 2, 1}));
    const Ixs before = learned.ixs();
    EXPECT_EQ(before[0], 0u);
    EXPECT_EQ(before[3], 3u);
    EXPECT_TRUE(learned.merge_two_clusters());
    EXPECT_EQ(learned.sizes(), (Sizes{3, 3, 2}));
    const Ixs after = learned.ixs();
    EXPECT_EQ(after[3], after[1]);
    EXPECT_EQ(after[7], after[1]);
    EXPECT_EQ(learned.centers()[after[3]][0], 10);  // 32 / 3
    EXPECT_TRUE(learned.merge_two_clusters());
    EXPECT_EQ(learned.sizes(), (Sizes{6, 2}));
}

TEST(RefLearner, MergesDownToOneClusterAndLeavesThatAlone) {
    Learned<2> learned(4, {0, 0, 10, 2, 50, 60, 7, 7, 3, 1});
    for (unsigned left = 3; left >= 1; --left) {
        EXPECT_TRUE(learned.merge_two_clusters());
        EXPECT_EQ(learned.nr_clusters(), left);
    }
    EXPECT_TRUE(learned.merge_two_clusters());
    EXPECT_EQ(learned.sizes(), Sizes{5});
    EXPECT_EQ(learned.centers(), (Centers<2>{{14, 14}}));
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 0, 0, 0}));
}

TEST(RefLearner, LearningAgainForgetsTheFirstDeltas) {
    Learned<1> learned(3, {1, 2, 3, 4, 5});
    EXPECT_TRUE(learned.merge_two_clusters());
    std::vector<int> values{9, 9, 30};
    EXPECT_TRUE(learned.learn(2, range_of<1>(values)));
    learned.nr_deltas = 3;
    EXPECT_EQ(learned.centers(), (Centers<1>{{9}, {30}}));
    EXPECT_EQ(learned.ixs(), (Ixs{0, 0, 1}));
}

TEST(RefLearner, RefusesVectorsOfAnotherSize) {
    const Learned<1> learned(2, {1, 2, 3});
    Sizes sizes(3);
    Centers<1> centers(1);
    Ixs ixs(4);
    EXPECT_FALSE(learned.get_sizes(sizes));
    EXPECT_FALSE(learned.get_centers(centers));
    EXPECT_FALSE(learned.get_ixs(ixs));
}

}  // namespace
}  // namespace vela::gvm::ref
