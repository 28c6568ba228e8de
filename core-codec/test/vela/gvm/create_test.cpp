#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>
#include <vela/gvm/create.hpp>
#include <vela/gvm/deltas.hpp>

namespace vela::gvm {
namespace {

template <std::size_t N>
using Pointer = std::shared_ptr<api::Learner<double, Iterator<N>>>;

TEST(CreateLearner, KnowsTwoNamesInBothDimensions) {
    for (const std::string name : {"ref", "fast"}) {
        SCOPED_TRACE(name);
        Pointer<1> one;
        Pointer<2> two;
        EXPECT_TRUE(create(one, name));
        EXPECT_TRUE(create(two, name));
        EXPECT_TRUE(one && two);
    }
}

TEST(CreateLearner, LeavesNullForAnyOtherName) {
    for (const std::string name : {"", "Fast", "fast ", "slow"}) {
        SCOPED_TRACE(name);
        Pointer<1> learner;
        ASSERT_TRUE(create(learner, "fast"));
        EXPECT_FALSE(create(learner, name));
        EXPECT_EQ(learner, nullptr);
    }
}

// What tells them apart from outside: the reference learner wants a delta for every cluster.
TEST(CreateLearner, GivesTheOneThatWasAskedFor) {
    std::vector<int> values{1, 2};
    Pointer<1> learner;
    ASSERT_TRUE(create(learner, "ref"));
    EXPECT_FALSE(learner->learn(3, range_of<1>(values)));
    ASSERT_TRUE(create(learner, "fast"));
    EXPECT_TRUE(learner->learn(3, range_of<1>(values)));
}

}  // namespace
}  // namespace vela::gvm
