#include <gtest/gtest.h>

#include <limits>
#include <vela/gvm/fast/Cluster.hpp>

namespace vela::gvm::fast {
namespace {

TEST(FastCluster, CostIsTheSumOfSquaredDistancesFromTheMean) {
    Cluster<double, 2> cluster;
    cluster.insert({1, 10});
    EXPECT_EQ(cluster.cost, 0);
    cluster.insert({3, 10});
    cluster.insert({2, 13});
    EXPECT_EQ(cluster.count, 3);
    EXPECT_EQ(cluster.sum, (std::array<double, 2>{6, 33}));
    EXPECT_EQ(cluster.sum_sq, 101 + 109 + 173);
    EXPECT_EQ(cluster.cost, 8);
}

TEST(FastCluster, MergeIsAsIfAllDeltasHadBeenInserted) {
    Cluster<double, 1> a;
    Cluster<double, 1> b;
    Cluster<double, 1> all;
    for (const double delta : {4.0, 6.0}) {
        a.insert({delta});
        all.insert({delta});
    }
    for (const double delta : {-9.0, 2.0, 7.0}) {
        b.insert({delta});
        all.insert({delta});
    }
    double delta = 0;
    a.merge_delta(delta, b);
    EXPECT_DOUBLE_EQ(delta, all.cost - a.cost - b.cost);
    a.merge(b);
    EXPECT_EQ(a.sum, all.sum);
    EXPECT_EQ(a.sum_sq, all.sum_sq);
    EXPECT_EQ(a.count, all.count);
    EXPECT_EQ(a.cost, all.cost);
}

// Who stands first is part of the result: the sum starts from that cluster's squares.
TEST(FastCluster, MergeDeltaAddsItsTermsFromLeftToRight) {
    const auto big = Cluster<double, 1>::alone({1e9});
    Cluster<double, 1> small;
    for (const double delta : {3.0, 5.0, 9.0})
        small.insert({delta});
    double big_first = 0;
    double small_first = 0;
    big.merge_delta(big_first, small);
    small.merge_delta(small_first, big);
    const double quotient = (1e9 + 17) * (1e9 + 17) / -4.0;
    EXPECT_EQ(big_first, quotient + 1e18 + 115 - 0 - small.cost);
    EXPECT_EQ(small_first, quotient + 115 + 1e18 - small.cost - 0);
    EXPECT_NE(big_first, small_first);
}

TEST(FastCluster, NobodyIsNeverCheap) {
    const auto nobody = Cluster<double, 1>::nobody();
    for (const double value : {0.0, -3.0, 2147483647.0}) {
        const auto other = Cluster<double, 1>::alone({value});
        double first = 0;
        double second = 0;
        nobody.merge_delta(first, other);
        other.merge_delta(second, nobody);
        EXPECT_EQ(first, std::numeric_limits<double>::infinity());
        EXPECT_EQ(second, std::numeric_limits<double>::infinity());
    }
}

TEST(FastCluster, EqualDeltasMergeForNothing) {
    double delta = 1;
    Cluster<double, 2>::alone({5, -7}).merge_delta(delta, Cluster<double, 2>::alone({5, -7}));
    EXPECT_EQ(delta, 0);
}

}  // namespace
}  // namespace vela::gvm::fast
