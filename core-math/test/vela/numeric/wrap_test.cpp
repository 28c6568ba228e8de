#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <vela/numeric/wrap.hpp>

namespace vela::numeric {
namespace {

constexpr auto smallest = std::numeric_limits<std::int32_t>::min();
constexpr auto largest = std::numeric_limits<std::int32_t>::max();

TEST(Wrap, TakesTheBitsAsTwosComplement) {
    EXPECT_EQ(wrap(0u), 0);
    EXPECT_EQ(wrap(0x7FFFFFFFu), largest);
    EXPECT_EQ(wrap(0x80000000u), smallest);
    EXPECT_EQ(wrap(0xFFFFFFFFu), -1);
}

TEST(Wrap, GoesRoundAtTheEnds) {
    EXPECT_EQ(wrap_add(largest, 1), smallest);
    EXPECT_EQ(wrap_add(smallest, -1), largest);
    EXPECT_EQ(wrap_sub(smallest, 1), largest);
    EXPECT_EQ(wrap_sub(0, smallest), smallest);
    EXPECT_EQ(wrap_mul(0x10000, 0x10000), 0);
    EXPECT_EQ(wrap_mul(smallest, -1), smallest);
    EXPECT_EQ(wrap_mul(largest, 2), -2);
}

TEST(Wrap, TheMagnitudeOfTheSmallestIsItself) {
    EXPECT_EQ(wrap_abs(-5), 5);
    EXPECT_EQ(wrap_abs(5), 5);
    EXPECT_EQ(wrap_abs(0), 0);
    EXPECT_EQ(wrap_abs(-largest), largest);
    EXPECT_EQ(wrap_abs(smallest), smallest);
}

TEST(Wrap, AgreesWithTheLowBitsOfWideArithmetic) {
    std::mt19937 engine(1);
    const auto low = [](std::int64_t wide) { return static_cast<std::int32_t>(wide); };
    for (int i = 0; i < 100000; ++i) {
        const auto a = static_cast<std::int32_t>(engine());
        const auto b = static_cast<std::int32_t>(engine());
        ASSERT_EQ(wrap_add(a, b), low(std::int64_t{a} + b));
        ASSERT_EQ(wrap_sub(a, b), low(std::int64_t{a} - b));
        ASSERT_EQ(wrap_mul(a, b), low(std::int64_t{a} * b));
        ASSERT_EQ(wrap_sub(wrap_add(a, b), b), a);
    }
}

}  // namespace
}  // namespace vela::numeric
