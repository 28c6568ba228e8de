#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <span>
#include <vector>
#include <vela/simd/widest.hpp>

namespace vela::simd {
namespace {

void add(std::span<int> to, std::span<const int> from, int factor) {
    for (std::size_t i = 0; i < to.size(); ++i)
        to[i] += factor * from[i];
}

double sum(std::span<const double> of) {
    return std::accumulate(of.begin(), of.end(), 0.0);
}

TEST(Widest, DoesWhatTheLoopDoesForEveryRest) {
    for (int size = 0; size < 70; ++size) {
        std::vector<int> from(static_cast<std::size_t>(size));
        std::iota(from.begin(), from.end(), -30);
        std::vector<int> plain(from.size(), 7);
        std::vector<int> wide = plain;
        add(plain, from, -3);
        widest<add>(std::span(wide), std::span<const int>(from), -3);
        EXPECT_EQ(wide, plain);
    }
}

TEST(Widest, KeepsTheOrderOfSumsOfReals) {
    const std::vector<double> values{1e300, 1.0, -1e300, 1.0, 1e300, -1e300, 1.0, 1.0, 0x1p53, 1.0};
    EXPECT_EQ(widest<sum>(std::span<const double>(values)), sum(values));
}

}  // namespace
}  // namespace vela::simd
