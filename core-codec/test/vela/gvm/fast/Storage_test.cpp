#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vela/gvm/fast/Storage.hpp>

namespace vela::gvm::fast {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(FastStorage, KeepsAShadowOfEachCluster) {
    Storage<double, 2> storage;
    storage.reset(3, 10);
    storage.store(1, Cluster<double, 2>::alone({4, -6}));
    const auto delta = Cluster<double, 2>::alone({8, -6});
    storage.merge(1, delta, storage[1].united_share(delta));
    EXPECT_EQ(storage[1].count, 2);
    EXPECT_EQ(storage[1].cost, 8);
    const auto shadows = storage.shadows();
    EXPECT_EQ(shadows.mean[0][1], 6);
    EXPECT_EQ(shadows.mean[1][1], -6);
    EXPECT_EQ(shadows.inverse[1], 0.5f);
    EXPECT_FLOAT_EQ(shadows.weight[1], 2.0f / 3);
}

TEST(FastStorage, TheLargestMeanIsThatOfTheLargestMagnitude) {
    struct Case {
        std::array<double, 2> first, second;
        float largest;
    };
    for (const auto& [first, second, largest] :
         {Case{{0, -0.0}, {0, 0}, 0.0f}, Case{{4, -6}, {5, 1}, 6.0f}, Case{{1, 2}, {-3, 0}, 3.0f},
          Case{{-2147483648.0, 1}, {2147483647.0, 1}, 2147483648.0f},
          Case{{1, 16777217}, {0, 0}, 16777216.0f}}) {
        Storage<double, 2> storage;
        storage.reset(3, 10);
        storage.store(0, Cluster<double, 2>::alone(first));
        storage.store(1, Cluster<double, 2>::alone(second));
        storage.store(2, Cluster<double, 2>::alone({1e9, 1e10}));
        EXPECT_EQ(storage.largest_mean(2), largest) << "the third does not count";
        EXPECT_EQ(storage.largest_mean(0), 0.0f);
    }
}

// Whole registers are read: what lies behind the last cluster must never be the nearest.
TEST(FastStorage, PositionsWithoutAClusterAreFartherAwayThanAnyDelta) {
    Storage<double, 1> storage;
    for (int round = 0; round < 2; ++round) {
        storage.reset(2, 10);
        for (std::size_t i = 0; i < 2 + sieve::padding; ++i)
            EXPECT_EQ(storage.shadows().mean[0][i], sieve::nowhere);
        storage.store(1, Cluster<double, 1>::alone({4}));
        EXPECT_EQ(storage.shadows().mean[0][1], 4);
        storage.erase(1);
        EXPECT_EQ(storage.shadows().mean[0][1], sieve::nowhere);
        storage.store(0, Cluster<double, 1>::alone({4}));
    }
}

TEST(FastStorage, NobodyStandsBehindAllPositions) {
    Storage<double, 1> storage;
    for (const std::size_t size : {3, 2}) {
        storage.reset(size, 10);
        double cost = 0;
        storage[static_cast<Position>(size)].merge_delta(cost, Cluster<double, 1>::alone({4}));
        EXPECT_EQ(cost, infinity);
    }
}

}  // namespace
}  // namespace vela::gvm::fast
