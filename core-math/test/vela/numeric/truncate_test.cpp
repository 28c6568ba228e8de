#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <vela/numeric/truncate.hpp>

namespace vela::numeric {
namespace {

constexpr auto smallest = std::numeric_limits<std::int32_t>::min();
constexpr auto largest = std::numeric_limits<std::int32_t>::max();

struct Case {
    const char* name;
    double value;
    std::int32_t expected;
};

class TruncateToInt32 : public testing::TestWithParam<Case> {};

TEST_P(TruncateToInt32, CutsTowardZero) {
    EXPECT_EQ(truncate_to_int32(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, TruncateToInt32,
    testing::Values(Case{"Zero", 0.0, 0}, Case{"MinusZero", -0.0, 0}, Case{"Positive", 2.9, 2},
                    Case{"Negative", -2.9, -2}, Case{"JustBelowOne", 0x1.fffffffffffffp-1, 0},
                    Case{"Largest", 2147483647.0, largest},
                    Case{"CutToTheLargest", 2147483647.9, largest},
                    Case{"JustTooLarge", 2147483648.0, smallest},
                    Case{"Smallest", -2147483648.0, smallest},
                    Case{"CutToTheSmallest", -2147483648.9, smallest},
                    Case{"JustTooSmall", -2147483649.0, smallest}, Case{"Huge", 1e300, smallest},
                    Case{"Infinite", std::numeric_limits<double>::infinity(), smallest},
                    Case{"MinusInfinite", -std::numeric_limits<double>::infinity(), smallest},
                    Case{"NotANumber", std::numeric_limits<double>::quiet_NaN(), smallest}),
    [](const auto& param_info) { return param_info.param.name; });

TEST(TruncateToInt32, KeepsEveryIntegerAndDropsEveryFraction) {
    std::mt19937 engine(1);
    for (int i = 0; i < 100000; ++i) {
        const auto value = static_cast<std::int32_t>(engine());
        const double fraction = static_cast<int>(engine() & 0xFFFFu) / 65536.0;
        ASSERT_EQ(truncate_to_int32(value + (value < 0 ? -fraction : fraction)), value);
    }
}

}  // namespace
}  // namespace vela::numeric
