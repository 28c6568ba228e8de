#include <gtest/gtest.h>

#include <array>
#include <vela/gvm/ref/Cluster.hpp>

namespace vela::gvm::ref {
namespace {

TEST(RefCluster, CostIsTheSumOfSquaredDistancesFromTheMean) {
    Cluster<std::array<int, 2>> cluster;
    EXPECT_EQ(cluster.cost(), 0);
    cluster.insert({1, 10});
    EXPECT_EQ(cluster.cost(), 0);
    cluster.insert({3, 10});
    cluster.insert({2, 13});
    EXPECT_EQ(cluster.cost(), 8);
}

TEST(RefCluster, AddDeltaTellsTheRiseAndChangesNothing) {
    Cluster<std::array<int, 1>> cluster;
    EXPECT_EQ(cluster.add_delta({7}), 0);  // the first delta is its own mean
    cluster.insert({2});
    cluster.insert({4});
    EXPECT_EQ(cluster.add_delta({9}), 24);
    EXPECT_EQ(cluster.count(), 2u);
    EXPECT_EQ(cluster.cost(), 2);
    cluster.insert({9});
    EXPECT_EQ(cluster.cost(), 26);
}

TEST(RefCluster, EveryChangeRenewsTheCost) {
    Cluster<std::array<int, 1>> a;
    a.insert({0});
    EXPECT_EQ(a.cost(), 0);
    Cluster<std::array<int, 1>> b;
    b.insert({10});
    a.merge(b);
    EXPECT_EQ(a.cost(), 50);
    EXPECT_EQ(a.sum()[0], 10);
    EXPECT_EQ(a.count(), 2u);
}

TEST(RefCluster, AnExponentDividesByThatPowerOfTheCount) {
    Cluster<std::array<int, 1>> cluster(2.0);
    cluster.insert({0});
    cluster.insert({10});
    EXPECT_EQ(cluster.cost(), 12.5);  // 50 / 2^2
}

}  // namespace
}  // namespace vela::gvm::ref
