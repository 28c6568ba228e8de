#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>
#include <utility>
#include <vector>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::golomb_rice {
namespace {

constexpr unsigned most = std::numeric_limits<unsigned>::max();

/// Sizes that are 0 but for `count` samples of index `ix`.
std::vector<unsigned> only(std::size_t ix, unsigned count) {
    std::vector<unsigned> sizes(ix + 1, 0);
    sizes[ix] = count;
    return sizes;
}

TEST(OptimizeSizes, TakesTheFewestBits) {
    const struct {
        const char* name;
        std::vector<unsigned> sizes;
        unsigned k;
        std::uint32_t total;
    } cases[] = {
        {"no index costs nothing", {}, 1, 0},
        {"no sample costs nothing", {0, 0, 0}, 1, 0},
        {"one cluster takes a low bit and a stop bit a sample", {10}, 1, 20},
        {"2 + 2 + 3 at 1", {1, 1, 1}, 1, 7},
        {"2 + 5 at 1 as 3 + 4 at 2: the lowest parameter wins", {1, 0, 0, 0, 0, 0, 1}, 1, 7},
        {"5 at 1, 4 at 2 and at 3: the lowest of these wins", only(7, 100), 2, 400},
        {"5 at 3 and at 4", only(15, 100), 3, 500},
        {"8 at 6 and at 7, 10 at 5", only(127, 1), 6, 8},
        {"a wider remainder than the range has", only(1023, 1), 7, 15},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        unsigned k = 0;
        std::uint32_t total = 99;
        ASSERT_TRUE(OptimizeSizes(1, 7)(k, total, c.sizes));
        EXPECT_EQ(k, c.k);
        EXPECT_EQ(total, c.total);
    }
}

TEST(OptimizeSizes, LooksAtTheParametersOfItsRangeAlone) {
    const std::vector<unsigned> sizes = only(7, 100);
    unsigned k = 0;
    std::uint32_t total = 0;
    ASSERT_TRUE(OptimizeSizes(1, 2)(k, total, sizes));
    EXPECT_EQ(k, 2u);
    EXPECT_EQ(total, 400u);
    ASSERT_TRUE(OptimizeSizes(5, 7)(k, total, sizes));
    EXPECT_EQ(k, 5u);
    EXPECT_EQ(total, 600u);
}

TEST(OptimizeSizes, CountsTheBitsThatTheIndicesTake) {
    std::mt19937 engine(5);
    std::uniform_int_distribution<unsigned> any_size(0, 9);
    for (int round = 0; round < 50; ++round) {
        std::vector<unsigned> sizes(1 + engine() % 300);
        for (unsigned& size : sizes)
            size = any_size(engine);
        std::uint64_t best = most;
        unsigned best_k = 0;
        for (unsigned k = 1; k <= 7; ++k) {
            std::uint64_t bits = 0;
            for (std::size_t i = 0; i < sizes.size(); ++i)
                for (unsigned n = 0; n < sizes[i]; ++n)
                    bits += k + 1 + i / (std::size_t{1} << k);
            if (bits < best) best_k = k;
            best = std::min(best, bits);
        }
        unsigned k = 0;
        std::uint32_t total = 0;
        ASSERT_TRUE(OptimizeSizes(1, 7)(k, total, sizes));
        EXPECT_EQ(k, best_k);
        EXPECT_EQ(total, best);
    }
}

std::uint32_t total_of(const std::vector<unsigned>& sizes) {
    unsigned k = 0;
    std::uint32_t total = 0;
    EXPECT_TRUE(OptimizeSizes(1, 7)(k, total, sizes));
    return total;
}

TEST(OptimizeSizes, TheFloorLeavesOutAnIndexForEachMerge) {
    const OptimizeSizes optimize(1, 7);
    const std::vector<unsigned> sizes{9, 7, 5, 3, 3, 2, 1};
    EXPECT_EQ(optimize.floor_after_merges(sizes, 0), total_of(sizes));
    EXPECT_EQ(optimize.floor_after_merges(sizes, 1), total_of({16, 5, 3, 3, 2, 1}));
    EXPECT_EQ(optimize.floor_after_merges(sizes, 4), total_of({27, 2, 1}));
    EXPECT_EQ(optimize.floor_after_merges(sizes, 6), 60u) << "2 bits a sample, in one cluster";
    EXPECT_EQ(optimize.floor_after_merges(sizes, 60), 60u);
    EXPECT_EQ(optimize.floor_after_merges({}, 1), 0u);
}

// Whatever is merged: the search passes over counts of centers that the floor says are too many.
TEST(OptimizeSizes, NoMergesGetBelowTheFloor) {
    std::mt19937 engine(6);
    for (int round = 0; round < 300; ++round) {
        std::vector<unsigned> sizes(2 + engine() % 150);
        for (unsigned& size : sizes)
            size = static_cast<unsigned>(1 + engine() % (1 + engine() % 60));
        std::ranges::sort(sizes, std::greater());
        std::vector<std::uint32_t> floors;
        for (std::size_t n = 0; n < sizes.size(); ++n)
            floors.push_back(OptimizeSizes(1, 7).floor_after_merges(sizes, n));
        EXPECT_TRUE(std::ranges::is_sorted(floors, std::greater()));

        const bool any_pair = round % 2 == 0;  // or the two last, which are the smallest
        for (std::size_t n = 1; n < floors.size(); ++n) {
            std::swap(sizes[any_pair ? engine() % sizes.size() : sizes.size() - 1], sizes.back());
            const unsigned merged = sizes.back();
            sizes.pop_back();
            sizes[any_pair ? engine() % sizes.size() : sizes.size() - 1] += merged;
            std::ranges::sort(sizes, std::greater());
            ASSERT_LE(floors[n], total_of(sizes)) << n;
        }
    }
}

TEST(OptimizeSizes, FailsIfNoTotalFitsThirtyTwoBits) {
    unsigned k = 42;
    std::uint32_t total = 43;
    // Twice each: the largest even total below 2^32 - 1 is the last that counts.
    EXPECT_TRUE(OptimizeSizes(1, 7)(k, total, std::vector<unsigned>{most / 2}));
    EXPECT_EQ(total, most - 1);
    k = 42, total = 43;
    EXPECT_FALSE(OptimizeSizes(1, 7)(k, total, std::vector<unsigned>{most / 2 + 1}));
    // 3 times 1431655765 is 2^32 - 1 itself.
    EXPECT_FALSE(OptimizeSizes(2, 7)(k, total, std::vector<unsigned>{1431655765}));
    // Totals that would be small again in 32 bits.
    EXPECT_FALSE(OptimizeSizes(1, 7)(k, total, std::vector<unsigned>{most, most, most, most}));
    EXPECT_EQ(k, 42u);
    EXPECT_EQ(total, 43u);
}

}  // namespace
}  // namespace vela::golomb_rice
