#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vela/limiter/scaler.hpp>

namespace vela::limiter {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();

double to_ten_digits(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9e", value);
    return std::strtod(text, nullptr);
}

TEST(DbScale, TenthsOfADecibelInTenDigits) {
    for (unsigned i = 0; i < scaler_count; ++i) {
        const bool exact = i % 60 == 0;
        const double expected =
            exact ? std::exp2(i / 60) : to_ten_digits(std::pow(10.0, i / 200.0));
        EXPECT_EQ(dBScale[i], expected) << i;
    }
}

TEST(DbScale, EntriesThatADecoderHasWrittenOut) {
    EXPECT_EQ(dBScale[0], 1.0);
    EXPECT_EQ(dBScale[1], 1.011579454);
    EXPECT_EQ(dBScale[60], 2.0);
    EXPECT_EQ(dBScale[120], 4.0);
    EXPECT_EQ(dBScale[180], 8.0);
    EXPECT_EQ(dBScale[239], 15.6675107);
    EXPECT_EQ(dBScale[240], 16.0);
    EXPECT_TRUE(std::ranges::is_sorted(dBScale, std::ranges::less_equal{}));
}

struct Case {
    const char* name;
    float value;
    bool ok;
    unsigned char ix;
    float scaler;
};

class ScalerToIx : public testing::TestWithParam<Case> {};

TEST_P(ScalerToIx, AsTheTableHasIt) {
    unsigned char ix = 77;
    float scaler = 3.5f;
    EXPECT_EQ(scaler_to_ix(ix, scaler, GetParam().value), GetParam().ok);
    EXPECT_EQ(ix, GetParam().ix);
    EXPECT_EQ(scaler, GetParam().scaler);
}

// A refused value leaves 77 and 3.5 where they were.
INSTANTIATE_TEST_SUITE_P(
    Gains, ScalerToIx,
    testing::Values(
        //    name             value           ok      ix   scaler
        Case{"Unity", 1.0f, true, 0, 1.0f}, Case{"JustAbove", 1.0000001f, true, 1, 1.011579454f},
        Case{"BelowSixDb", 1.9999f, true, 60, 2.0f}, Case{"SixDb", 2.0f, true, 60, 2.0f},
        Case{"JustAboveSixDb", 2.0000002f, true, 61, 2.018366364f},
        Case{"TenfoldIsAnEntry", 10.0f, true, 200, 10.0f}, Case{"Top", 16.0f, true, 240, 16.0f},
        Case{"AboveTheTable", 16.000002f, false, 77, 3.5f},
        Case{"BelowUnity", 0.99999994f, false, 77, 3.5f}, Case{"Zero", 0.0f, false, 77, 3.5f},
        Case{"Negative", -2.0f, false, 77, 3.5f}, Case{"Infinity", infinity, false, 77, 3.5f},
        Case{"NotANumber", not_a_number, false, 77, 3.5f}),
    [](const auto& param_info) { return std::string(param_info.param.name); });

TEST(IxToScaler, EveryIndexOfTheTable) {
    for (unsigned ix = 0; ix < scaler_count; ++ix) {
        float scaler = 0;
        EXPECT_TRUE(ix_to_scaler(scaler, static_cast<unsigned char>(ix))) << ix;
        EXPECT_EQ(scaler, static_cast<float>(dBScale[ix])) << ix;
    }
}

TEST(IxToScaler, BehindTheTable) {
    for (unsigned ix = scaler_count; ix < silencing_ix; ++ix) {
        float scaler = 3.5f;
        EXPECT_FALSE(ix_to_scaler(scaler, static_cast<unsigned char>(ix))) << ix;
        EXPECT_EQ(scaler, 3.5f);
    }
}

TEST(IxToScaler, TheLastIndexSilences) {
    float scaler = 0;
    EXPECT_TRUE(ix_to_scaler(scaler, silencing_ix));
    EXPECT_EQ(scaler, infinity);
}

TEST(ScalerSearch, NeverBelowTheValueAndLessThanAStepAbove) {
    for (float value = 1.0f; value <= 16.0f; value += 0.00097f) {
        unsigned char ix = 0;
        float scaler = 0;
        ASSERT_TRUE(scaler_to_ix(ix, scaler, value));
        EXPECT_GE(dBScale[ix], value);
        EXPECT_TRUE(ix == 0 || dBScale[ix - 1u] < value) << value;
    }
}

}  // namespace
}  // namespace vela::limiter
