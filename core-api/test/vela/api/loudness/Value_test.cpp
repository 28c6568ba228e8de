#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vela/api/RoomType.hpp>
#include <vela/api/loudness/Value.hpp>

namespace vela::api::loudness {
namespace {

// These numbers and their order reach the decoder.
static_assert(static_cast<std::uint32_t>(Parameter::ProgramLoudness) == 0);
static_assert(static_cast<std::uint32_t>(Parameter::ProgramLoudnessRange) == 1);
static_assert(static_cast<std::uint32_t>(Parameter::SpeechLoudness) == 2);
static_assert(static_cast<std::uint32_t>(Parameter::MaximumTruePeak) == 3);
static_assert(static_cast<std::uint32_t>(Parameter::ShortTermLoudness) == 4);
static_assert(static_cast<std::uint32_t>(Parameter::MomentaryLoudness) == 5);
static_assert(static_cast<std::uint32_t>(Parameter::None) == 6);
static_assert(sizeof(Parameter) == 4 && sizeof(RoomType) == 4);

struct Case {
    const char* name;
    double given;
    double kept;
};

class KeptTenths : public testing::TestWithParam<Case> {};

TEST_P(KeptTenths, AreCutTowardZero) {
    Value value;
    value.set_data(GetParam().given);
    EXPECT_EQ(value.data(), GetParam().kept);
}

INSTANTIATE_TEST_SUITE_P(
    Values, KeptTenths,
    testing::Values(Case{"Whole", -23.0, -23.0}, Case{"Tenth", 0.1, 0.1},
                    Case{"CutUp", -23.04, -23.0}, Case{"CutUpToo", -23.09, -23.0},
                    Case{"CutDown", 30.09, 30.0}, Case{"BelowATenth", -0.09, 0.0},
                    // 0.3 * 10.0 is just 3, and 1.1 * 10.0 a little more than 11
                    Case{"RoundedProduct", 0.3, 0.3}, Case{"RoundedProductToo", 1.1, 1.1},
                    // -0.7 * 10.0 in double precision is -7 exactly
                    Case{"Negative", -0.7, -0.7}, Case{"BeyondAllTenths", 1e12, -214748364.8},
                    Case{"NotANumber", std::numeric_limits<double>::quiet_NaN(), -214748364.8}),
    [](const auto& param_info) { return param_info.param.name; });

// A value that went through the tenths once stays as it is.
TEST(Value, TenthsComeBackUnchanged) {
    for (int tenths = -1000; tenths <= 1000; ++tenths) {
        Value value;
        value.set_data(tenths / 10.0);
        ASSERT_EQ(value.data(), tenths / 10.0);
    }
}

// Parameter 6 matches none of the six, so nothing takes such a value.
TEST(Value, ADefaultOneMeasuresNothing) {
    const Value value;
    EXPECT_EQ(value.parameter(), Parameter::None);
    EXPECT_EQ(value.dimension(), 0u);
    EXPECT_EQ(value.data(), 0.0);
}

TEST(Value, CopiesAreIndependent) {
    Value value;
    value.set_parameter(Parameter::SpeechLoudness);
    value.set_dimension(3);
    value.set_data(-23.0);

    Value copy = value;
    Value assigned;
    assigned = value;
    value.set_parameter(Parameter::MaximumTruePeak);
    value.set_dimension(1);
    value.set_data(1.0);
    for (const Value* kept : {&copy, &assigned}) {
        EXPECT_EQ(kept->parameter(), Parameter::SpeechLoudness);
        EXPECT_EQ(kept->dimension(), 3u);
        EXPECT_EQ(kept->data(), -23.0);
    }
    EXPECT_EQ(value.data(), 1.0);
}

}  // namespace
}  // namespace vela::api::loudness
