#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>
#include <vela/gvm/fast/BySize.hpp>

namespace vela::gvm::fast {
namespace {

using Positions = std::vector<Position>;

Positions order_of(const BySize& by_size, std::size_t nr_clusters) {
    const auto order = by_size.order(nr_clusters);
    return {order.begin(), order.end()};
}

BySize four_of_one() {
    BySize by_size;
    by_size.reset(4, 100);
    for (Position c = 0; c < 4; ++c)
        by_size.grow(c, 1);
    return by_size;
}

TEST(FastBySize, EqualSizesKeepTheOrderInWhichTheyWereReached) {
    BySize by_size = four_of_one();
    EXPECT_EQ(order_of(by_size, 4), (Positions{0, 1, 2, 3}));
    by_size.grow(2, 2);
    by_size.grow(1, 2);
    EXPECT_EQ(order_of(by_size, 4), (Positions{2, 1, 0, 3}));
    by_size.grow(0, 3);
    EXPECT_EQ(order_of(by_size, 3), (Positions{0, 2, 1}));
}

TEST(FastBySize, AClusterThatShrinksStandsBeforeOthersOfItsSize) {
    BySize by_size = four_of_one();
    by_size.grow(3, 5);
    by_size.shrink_to_one(3);
    EXPECT_EQ(order_of(by_size, 4), (Positions{3, 0, 1, 2}));
}

TEST(FastBySize, AClusterThatWasAloneBeforeKeepsItsPlace) {
    BySize by_size = four_of_one();
    by_size.shrink_to_one(2);
    EXPECT_EQ(order_of(by_size, 4), (Positions{0, 1, 2, 3}));
}

TEST(FastBySize, BeforeTellsTheOrderOfTwo) {
    BySize by_size = four_of_one();
    by_size.grow(3, 2);
    EXPECT_TRUE(by_size.before(3, 0));
    EXPECT_TRUE(by_size.before(0, 1));
    EXPECT_FALSE(by_size.before(1, 0));
    EXPECT_FALSE(by_size.before(1, 1));
}

TEST(FastBySize, TheOrderIsThatOfAllPairs) {
    std::mt19937 engine(4);
    for (const std::size_t nr_clusters : {1, 2, 63, 64, 150}) {
        BySize by_size;
        by_size.reset(nr_clusters, 2000);
        std::vector<int> sizes(nr_clusters, 0);
        for (unsigned change = 0; change < 2000; ++change) {
            const std::size_t c = change < nr_clusters ? change : engine() % nr_clusters;
            const bool shrinks = sizes[c] != 0 && engine() % 10 == 0;
            sizes[c] = shrinks ? 1 : sizes[c] + 1;
            if (shrinks)
                by_size.shrink_to_one(static_cast<Position>(c));
            else
                by_size.grow(static_cast<Position>(c), sizes[c]);
            if (change % 97 != 0 || change < nr_clusters) continue;
            Positions expected(nr_clusters);
            std::iota(expected.begin(), expected.end(), Position{0});
            std::ranges::sort(expected,
                              [&](Position a, Position b) { return by_size.before(a, b); });
            EXPECT_EQ(order_of(by_size, nr_clusters), expected);
        }
    }
}

TEST(FastBySize, SizesAreDescendingHoweverOftenTheyAreAskedFor) {
    BySize by_size = four_of_one();
    by_size.grow(1, 100);
    by_size.grow(2, 7);
    for (int round = 0; round < 2; ++round) {
        std::vector<unsigned> sizes(4);
        by_size.get_sizes(sizes);
        EXPECT_EQ(sizes, (std::vector<unsigned>{100, 7, 1, 1}));
    }
}

TEST(FastBySize, OfNoClustersThereIsNoOrder) {
    BySize by_size;
    EXPECT_TRUE(by_size.order(0).empty());
    by_size.get_sizes({});
    by_size.reset(0, 0);
    EXPECT_TRUE(by_size.order(0).empty());
}

TEST(FastBySize, OnlyLiveClustersCount) {
    BySize by_size = four_of_one();
    by_size.grow(3, 9);
    EXPECT_EQ(order_of(by_size, 3), (Positions{0, 1, 2}));
    std::vector<unsigned> sizes(3);
    by_size.get_sizes(sizes);
    EXPECT_EQ(sizes, (std::vector<unsigned>{1, 1, 1}));
}

}  // namespace
}  // namespace vela::gvm::fast
