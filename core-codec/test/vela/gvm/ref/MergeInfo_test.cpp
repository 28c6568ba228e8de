#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>
#include <vector>
#include <vela/gvm/ref/MergeInfo.hpp>

namespace vela::gvm::ref {
namespace {

using Delta = std::array<int, 1>;
using Clusters = std::vector<Cluster<Delta>>;

Clusters clusters_of(const std::vector<int>& deltas) {
    Clusters clusters(deltas.size());
    for (std::size_t i = 0; i < deltas.size(); ++i)
        clusters[i].insert({deltas[i]});
    return clusters;
}

void expect_best(const MergeInfo<Delta>& info, std::size_t x, std::size_t y, double delta) {
    const auto merge = info.best_merge();
    ASSERT_TRUE(merge);
    EXPECT_EQ(merge->x, x);
    EXPECT_EQ(merge->y, y);
    EXPECT_EQ(merge->delta, delta);
}

TEST(RefMergeInfo, FindsTheCheapestPair) {
    const Clusters clusters = clusters_of({0, 100, 40, 104});
    MergeInfo<Delta> info;
    ASSERT_TRUE(info.setup(clusters));
    expect_best(info, 3, 1, 8);
    EXPECT_EQ(info.best_merge()->united.count(), 2u);
    EXPECT_EQ(info.best_merge()->united.sum()[0], 204);
}

TEST(RefMergeInfo, TiesGoToTheLowestPair) {
    MergeInfo<Delta> info;
    ASSERT_TRUE(info.setup(clusters_of({0, 10, 20, 30})));
    expect_best(info, 1, 0, 50);
    ASSERT_TRUE(info.setup(clusters_of({0, 100, 50, 150})));  // row 2 has two pairs as cheap
    expect_best(info, 2, 0, 1250);
}

TEST(RefMergeInfo, ASingleClusterHasNoPair) {
    Clusters clusters = clusters_of({5});
    MergeInfo<Delta> info;
    ASSERT_TRUE(info.setup(clusters));
    EXPECT_FALSE(info.best_merge());
    clusters[0].insert({9});
    EXPECT_TRUE(info.update(clusters, 0));
    EXPECT_FALSE(info.best_merge());
}

// The pair (1,0) is best until its cost rises above the others'.
TEST(RefMergeInfo, ABestPairThatGetsDearerIsGivenUp) {
    Clusters clusters = clusters_of({0, 4, 20, 26});
    MergeInfo<Delta> info;
    ASSERT_TRUE(info.setup(clusters));
    expect_best(info, 1, 0, 8);
    for (int i = 0; i < 3; ++i)
        clusters[0].insert({-8});
    ASSERT_TRUE(info.update(clusters, 0));
    expect_best(info, 3, 2, 18);
}

TEST(RefMergeInfo, UpdatesEqualASetupFromScratch) {
    std::mt19937 engine(7);
    const auto number = [&](unsigned limit) { return static_cast<int>(engine() % limit); };
    for (int round = 0; round < 30; ++round) {
        Clusters clusters = clusters_of({number(1000), number(1000), number(1000), number(1000)});
        MergeInfo<Delta> info;
        ASSERT_TRUE(info.setup(clusters));
        for (int i = 0; i < 20; ++i) {
            const auto c = static_cast<std::size_t>(number(4));
            clusters[c].insert({number(1000)});
            ASSERT_TRUE(info.update(clusters, c));
            MergeInfo<Delta> fresh;
            ASSERT_TRUE(fresh.setup(clusters));
            const auto expected = fresh.best_merge();
            expect_best(info, expected->x, expected->y, expected->delta);
        }
    }
}

TEST(RefMergeInfo, SetupRefusesClustersThatCannotBeCompared) {
    MergeInfo<Delta> info;
    EXPECT_FALSE(info.setup({}));
    EXPECT_FALSE(info.setup(Clusters(2)));  // empty clusters
    Clusters clusters = clusters_of({1, 2});
    clusters[1] = Cluster<Delta>(0.5);
    clusters[1].insert({2});
    EXPECT_FALSE(info.setup(clusters));
    for (Cluster<Delta>& cluster : clusters) {
        cluster = Cluster<Delta>(std::numeric_limits<double>::quiet_NaN());
        cluster.insert({2});
    }
    EXPECT_FALSE(info.setup(clusters));
}

TEST(RefMergeInfo, UpdateRefusesWhatTheTableWasNotMadeFor) {
    Clusters clusters = clusters_of({1, 2, 3});
    MergeInfo<Delta> info;
    EXPECT_FALSE(info.update(clusters, 0));
    ASSERT_TRUE(info.setup(clusters));
    EXPECT_FALSE(info.update(clusters, 3));
    EXPECT_FALSE(info.update(clusters_of({1, 2}), 0));
    clusters[1] = Cluster<Delta>(0.5);
    clusters[1].insert({2});
    EXPECT_FALSE(info.update(clusters, 1));
    clusters[1] = Cluster<Delta>();
    EXPECT_FALSE(info.update(clusters, 1));
}

}  // namespace
}  // namespace vela::gvm::ref
