#include <gtest/gtest.h>

#include <vector>
#include <vela/gvm/Learned.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Learner.hpp>
#include <vela/gvm/impl/Learner.hpp>
#include <vela/gvm/ref/Learner.hpp>

namespace vela::gvm::impl {
namespace {

using Ref = Learner<double, Iterator<1>, ref::Learner<Iterator<1>>>;
using Fast = Learner<double, Iterator<1>, fast::Learner<double, Iterator<1>>>;

template <typename T>
struct BothLearners : testing::Test {};
using Both = testing::Types<Ref, Fast>;
TYPED_TEST_SUITE(BothLearners, Both);

TYPED_TEST(BothLearners, SizesTheVectorsThatItFills) {
    std::vector<int> values{0, 100, 0, 104};
    TypeParam learner;
    ASSERT_TRUE(learner.learn(2, range_of<1>(values)));
    Sizes sizes(9);
    Centers<1> centers;
    Ixs ixs(1);
    EXPECT_TRUE(learner.get_sizes(sizes));
    EXPECT_TRUE(learner.get_centers(centers));
    EXPECT_TRUE(learner.get_ixs(ixs));
    EXPECT_EQ(sizes, (Sizes{2, 2}));
    EXPECT_EQ(centers.size(), 2u);
    EXPECT_EQ(ixs.size(), 4u);
    EXPECT_EQ(learner.cost(), 8.0);
}

TYPED_TEST(BothLearners, RefusesToMergeBeforeItHasLearned) {
    TypeParam learner;
    Ixs ixs;
    EXPECT_FALSE(learner.merge_two_clusters());
    EXPECT_FALSE(learner.get_ixs(ixs));
    EXPECT_EQ(learner.nr_clusters(), 0u);
    EXPECT_EQ(learner.cost(), 0.0);
}

TYPED_TEST(BothLearners, RefusesToMergeAfterAFailedLearn) {
    std::vector<int> values{1, 2, 3};
    TypeParam learner;
    ASSERT_TRUE(learner.learn(2, range_of<1>(values)));
    ASSERT_FALSE(learner.learn(0, range_of<1>(values)));
    Ixs ixs;
    EXPECT_FALSE(learner.merge_two_clusters());
    EXPECT_FALSE(learner.get_ixs(ixs));
    EXPECT_TRUE(learner.learn(2, range_of<1>(values)));
    EXPECT_TRUE(learner.get_ixs(ixs));
    EXPECT_TRUE(learner.merge_two_clusters());
}

// 10 remembers 7, which 6 joins; only the exact costs show that 13 is nearer to 10 then.
TEST(ImplLearner, UpdateAllReachesTheFastLearner) {
    std::vector<int> values{7, 13, 10, 6, 1};
    Fast learner;
    Ixs ixs;
    ASSERT_TRUE(learner.learn(3, range_of<1>(values)));  // on unless switched off
    ASSERT_TRUE(learner.get_ixs(ixs));
    EXPECT_EQ(ixs, (Ixs{0, 1, 1, 0, 2}));
    learner.set_update_all_after_insert(false);
    ASSERT_TRUE(learner.learn(3, range_of<1>(values)));
    ASSERT_TRUE(learner.get_ixs(ixs));
    EXPECT_EQ(ixs, (Ixs{0, 1, 0, 0, 2}));
}

TEST(ImplLearner, UpdateAllMeansNothingToTheReferenceLearner) {
    std::vector<int> values{7, 13, 10, 6, 1};
    for (const bool update_all : {false, true}) {
        Ref learner;
        Ixs ixs;
        learner.set_update_all_after_insert(update_all);
        ASSERT_TRUE(learner.learn(3, range_of<1>(values)));
        ASSERT_TRUE(learner.get_ixs(ixs));
        EXPECT_EQ(ixs, (Ixs{0, 1, 1, 0, 2}));
    }
}

}  // namespace
}  // namespace vela::gvm::impl
