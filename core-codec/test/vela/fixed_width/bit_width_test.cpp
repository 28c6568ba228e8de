#include <gtest/gtest.h>

#include <limits>
#include <vela/fixed_width/bit_width.hpp>

namespace vela::fixed_width {
namespace {

TEST(BitWidth, IsThatOfTheLargestMagnitude) {
    const struct {
        int value;
        unsigned width;
    } cases[] = {{0, 0},
                 {1, 1},
                 {-1, 1},
                 {2, 2},
                 {3, 2},
                 {-4, 3},
                 {8388607, 23},
                 {-8388608, 24},
                 {std::numeric_limits<int>::max(), 31},
                 {std::numeric_limits<int>::min(), 32}};
    for (const auto& c : cases) {
        EXPECT_EQ(bit_width<1>({{c.value}}), c.width) << c.value;
        EXPECT_EQ(bit_width<1>({{0}, {c.value}, {0}}), c.width) << c.value;
        EXPECT_EQ(bit_width<2>({{0, 0}, {0, c.value}}), c.width) << c.value;
        EXPECT_EQ(bit_width<2>({{c.value, 0}, {0, 0}}), c.width) << c.value;
    }
}

TEST(BitWidth, OfNothingIsZero) {
    EXPECT_EQ(bit_width<1>({}), 0u);
    EXPECT_EQ(bit_width<2>({}), 0u);
}

TEST(BitWidth, DoesNotGrowWithTheCountOfValues) {
    EXPECT_EQ(bit_width<1>({{4}, {-3}, {7}, {-7}}), 3u);
    EXPECT_EQ(bit_width<2>({{4, -3}, {2, 1}}), 3u);
}

}  // namespace
}  // namespace vela::fixed_width
