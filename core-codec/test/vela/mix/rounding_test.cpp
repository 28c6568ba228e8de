#include <gtest/gtest.h>

#include <limits>
#include <vela/mix/rounding.hpp>

namespace vela::mix {
namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

TEST(Rounding, EvenGoesTowardZeroSoThatAnAnchorNeverGrows) {
    const struct {
        int x, even;
    } cases[] = {{0, 0},
                 {1, 0},
                 {-1, 0},
                 {2, 2},
                 {-2, -2},
                 {7, 6},
                 {-7, -6},
                 {8, 8},
                 {highest, highest - 1},
                 {lowest, lowest},
                 {lowest + 1, lowest + 2}};
    for (const auto& c : cases)
        EXPECT_EQ(even(c.x), c.even) << c.x;
}

TEST(Rounding, QuadGoesToTheNearestMultipleOfFourAndTiesTowardZero) {
    const struct {
        int x, quad;
    } cases[] = {{0, 0},  {1, 0},  {2, 0},   {3, 4},   {4, 4},   {5, 4},   {6, 4},    {7, 8},
                 {-1, 0}, {-2, 0}, {-3, -4}, {-5, -4}, {-6, -4}, {-7, -8}, {-10, -8}, {10, 8}};
    for (const auto& c : cases)
        EXPECT_EQ(quad(c.x), c.quad) << c.x;
}

TEST(Rounding, QuadWrapsAtTheEndsOfTheRange) {
    EXPECT_EQ(quad(highest), lowest);
    EXPECT_EQ(quad(highest - 1), highest - 3);
    EXPECT_EQ(quad(lowest), highest - 3);
    EXPECT_EQ(quad(lowest + 1), lowest);
}

}  // namespace
}  // namespace vela::mix
