#include <gtest/gtest.h>

#include <vector>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Clustering.hpp>

namespace vela::gvm::fast {
namespace {

using Ixs = std::vector<unsigned long>;

TEST(FastClustering, ThePermutationLeadsFromPositionsToIndices) {
    std::vector<int> values{0, 100, 200, 200, 200, 100};
    Clustering<double, 1> clustering;
    Membership membership(values.size(), 3);
    ASSERT_TRUE(clustering.process_data(range_of<1>(values), 3, true, membership));
    Ixs permutation;
    clustering.get_permutation(permutation);
    EXPECT_EQ(permutation, (Ixs{2, 1, 0}));
    Ixs positions(values.size());
    ASSERT_TRUE(membership.get_ixs(positions));
    EXPECT_EQ(positions, (Ixs{0, 1, 2, 2, 2, 1}));
}

TEST(FastClustering, AMembershipTooSmallStopsThePass) {
    std::vector<int> values{0, 100, 200};
    Clustering<double, 1> clustering;
    Membership too_few_deltas(2, 3);
    EXPECT_FALSE(clustering.process_data(range_of<1>(values), 3, true, too_few_deltas));
    Membership too_few_positions(3, 2);
    EXPECT_FALSE(clustering.process_data(range_of<1>(values), 3, true, too_few_positions));
}

}  // namespace
}  // namespace vela::gvm::fast
