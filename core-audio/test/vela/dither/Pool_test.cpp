#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <thread>
#include <vela/dither/Pool.hpp>

namespace vela::dither {
namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

std::vector<int> dithered(const Pool& pool, std::vector<int> samples) {
    EXPECT_TRUE(pool({samples.data(), samples.data() + samples.size()}, 0));
    return samples;
}

// Silence as long as the table can only be dithered with the whole of it.
std::vector<int> table_of(const Pool& pool, std::size_t size) {
    return dithered(pool, std::vector<int>(size));
}

bool is_window(const std::vector<int>& part, const std::vector<int>& table) {
    return std::search(table.begin(), table.end(), part.begin(), part.end()) != table.end();
}

TEST(Pool, NoiseIsTriangularWithinItsReach) {
    constexpr std::size_t size = 20480;
    constexpr int reach = 1 << 11;
    const auto noise = table_of(Pool(11, 0, 32, size), size);
    double sum = 0;
    std::size_t near = 0;
    for (const int n : noise) {
        EXPECT_LE(std::abs(n), reach);
        sum += n;
        near += std::abs(n) <= reach / 2;
    }
    // Six standard deviations: about once in a billion runs.
    EXPECT_NEAR(sum / size, 0.0, 6 * reach * 0.41 / 143);
    EXPECT_NEAR(static_cast<double>(near) / size, 0.75, 6 * 0.433 / 143);
}

TEST(Pool, BothEndsOfTheReachComeUp) {
    const auto noise = table_of(Pool(1, 0, 32, 2000), 2000);
    EXPECT_EQ(std::ranges::min(noise), -2);
    EXPECT_EQ(std::ranges::max(noise), 2);
}

TEST(Pool, MeanMovesTheNoise) {
    for (const int n : table_of(Pool(0, 100, 32, 500), 500))
        EXPECT_LE(std::abs(n - 100), 1);
}

TEST(Pool, FramesAreWindowsOfOneTable) {
    const Pool pool(8, 0, 32, 300);
    const auto table = table_of(pool, 300);
    for (const std::size_t length : {1, 10, 100, 297, 298, 299, 300}) {
        const auto noise = dithered(pool, std::vector<int>(length));
        EXPECT_TRUE(is_window(noise, table)) << length;
    }
}

TEST(Pool, FramesInARowDiffer) {
    const Pool pool(16, 0, 32, 20480);
    const auto first = dithered(pool, std::vector<int>(64));
    int same = 0;
    for (int i = 0; i < 20; ++i)
        same += dithered(pool, std::vector<int>(64)) == first;
    EXPECT_LE(same, 1) << "an offset may come twice, but hardly more often";
}

TEST(Pool, PoolsDifferByTheClock) {
    const auto first = table_of(Pool(16, 0, 32, 100), 100);
    const auto second = table_of(Pool(16, 0, 32, 100), 100);
    EXPECT_NE(first, second);
}

TEST(Pool, SamplesGetTheNoiseOfTheirPlace) {
    constexpr std::size_t size = 400;
    const Pool pool(12, 0, 32, size);
    const auto table = table_of(pool, size);
    for (const int x : {lowest, lowest + 1, lowest + 4000, -5000, -1, 0, 1, 5000, highest - 4000,
                        highest - 1, highest}) {
        const auto out = dithered(pool, std::vector<int>(size, x));
        for (std::size_t i = 0; i < size; ++i) {
            const std::int64_t sum = std::int64_t{x} + table[i];
            EXPECT_EQ(out[i], std::clamp<std::int64_t>(sum, lowest, highest)) << x;
        }
    }
}

TEST(Pool, NarrowSamplesStopAtTheirOwnFullScale) {
    constexpr std::size_t size = 400;
    const Pool pool(6, 0, 8, size);
    const auto table = table_of(pool, size);
    for (const int x : {-128, -100, -1, 1, 100, 127}) {
        const auto out = dithered(pool, std::vector<int>(size, x));
        for (std::size_t i = 0; i < size; ++i)
            EXPECT_EQ(out[i], std::clamp(x + table[i], -128, 127)) << x;
    }
}

TEST(Pool, SilenceIsTheNoiseEvenBeyondFullScale) {
    const auto noise = table_of(Pool(10, 0, 4, 2000), 2000);
    EXPECT_LT(std::ranges::min(noise), -8);
    EXPECT_GT(std::ranges::max(noise), 7);
}

TEST(Pool, MoreSamplesThanNoiseAreRefused) {
    const Pool pool(8, 0, 32, 10);
    std::vector<int> samples(11, 7);
    EXPECT_FALSE(pool({samples.data(), samples.data() + samples.size()}, 0));
    EXPECT_EQ(samples, std::vector<int>(11, 7));
}

TEST(Pool, NothingToDither) {
    const Pool pool(8, 0, 32, 10);
    EXPECT_TRUE(pool(Range<int*>(), 0));
    EXPECT_TRUE(Pool(8, 0, 32, 0)(Range<int*>(), 5));
}

TEST(Pool, ThreadsShareAPool) {
    const Pool pool(8, 0, 32, 2048);
    const auto table = table_of(pool, 2048);
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 20; ++n)
                EXPECT_TRUE(is_window(dithered(pool, std::vector<int>(100)), table));
        });
}

}  // namespace
}  // namespace vela::dither
