#include <gtest/gtest.h>

#include <limits>
#include <vela/loudness/codec/encode.hpp>

namespace vela::loudness::codec {

using api::loudness::Parameter;
using enum api::loudness::Parameter;

struct Case {
    const char* name;
    Parameter parameter;
    double value;
    bool ok;
    unsigned code;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.name;
}

class EncodeLoudness : public testing::TestWithParam<Case> {};

TEST_P(EncodeLoudness, PutsTheCodeOnTop) {
    const Case& c = GetParam();
    unsigned out = 0xABCDEF01u;
    EXPECT_EQ(encode(out, c.parameter, c.value, nullptr, nullptr), c.ok);
    EXPECT_EQ(out, c.ok ? c.code << 22 : 0xABCDEF01u);
}

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(Values, EncodeLoudness,
                         testing::Values(
                             //    name                   parameter             value     ok code
                             Case{"Program", ProgramLoudness, -23.0, true, 120},
                             Case{"ProgramLowest", ProgramLoudness, -35.0, true, 0},
                             Case{"ProgramCutToLowest", ProgramLoudness, -35.09, true, 0},
                             Case{"ProgramBelow", ProgramLoudness, -35.1, false, 0},
                             Case{"ProgramHighest", ProgramLoudness, -2.0, true, 330},
                             Case{"ProgramAbove", ProgramLoudness, -1.9, false, 0},
                             Case{"SpeechLowest", SpeechLoudness, -35.0, true, 0},
                             Case{"SpeechHighest", SpeechLoudness, -2.0, true, 330},
                             Case{"SpeechAbove", SpeechLoudness, -1.9, false, 0},
                             Case{"RangeLowest", ProgramLoudnessRange, 0.0, true, 0},
                             Case{"RangeCutToLowest", ProgramLoudnessRange, -0.09, true, 0},
                             Case{"RangeBelow", ProgramLoudnessRange, -0.1, false, 0},
                             Case{"RangeHighest", ProgramLoudnessRange, 30.0, true, 300},
                             Case{"RangeCutToHighest", ProgramLoudnessRange, 30.09, true, 300},
                             Case{"RangeAbove", ProgramLoudnessRange, 30.1, false, 0},
                             Case{"PeakLowest", MaximumTruePeak, -1.0, true, 0},
                             Case{"PeakBelow", MaximumTruePeak, -1.1, false, 0},
                             Case{"PeakHighest", MaximumTruePeak, 4.0, true, 50},
                             Case{"PeakAbove", MaximumTruePeak, 4.1, false, 0},
                             Case{"ShortTermLowest", ShortTermLoudness, -100.0, true, 0},
                             Case{"ShortTermBelow", ShortTermLoudness, -100.1, false, 0},
                             Case{"ShortTermHighest", ShortTermLoudness, 0.0, true, 1000},
                             Case{"ShortTermAbove", ShortTermLoudness, 0.1, false, 0},
                             Case{"MomentaryLowest", MomentaryLoudness, -100.0, true, 0},
                             Case{"MomentaryHighest", MomentaryLoudness, 0.0, true, 1000},
                             Case{"MomentaryAbove", MomentaryLoudness, 0.1, false, 0},
                             Case{"NoNumber", ProgramLoudness, nan, false, 0},
                             Case{"FarAbove", ShortTermLoudness, 1e300, false, 0},
                             Case{"LargestInteger", ShortTermLoudness, 214748364.7, false, 0},
                             Case{"FarBelow", ShortTermLoudness, -1e300, false, 0},
                             Case{"NoParameter", None, -23.0, false, 0},
                             Case{"BeyondTheParameters", static_cast<Parameter>(7), 0.0, false, 0}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(EncodeLoudnessPacking, FirstAlone) {
    const double first = -24.0;
    unsigned out = 0;
    EXPECT_TRUE(encode(out, ProgramLoudness, -23.0, &first, nullptr));
    EXPECT_EQ(out, 120u << 22 | 1u << 21 | 110u << 11);
}

TEST(EncodeLoudnessPacking, SecondAlone) {
    const double second = -24.0;
    unsigned out = 0;
    EXPECT_TRUE(encode(out, ProgramLoudness, -23.0, nullptr, &second));
    EXPECT_EQ(out, 120u << 22 | 1u << 10 | 110u);
}

TEST(EncodeLoudnessPacking, PresentZeroDiffersFromAbsent) {
    const double lowest = -35.0;
    unsigned out = 0;
    EXPECT_TRUE(encode(out, ProgramLoudness, -35.0, &lowest, &lowest));
    EXPECT_EQ(out, 1u << 21 | 1u << 10);
}

TEST(EncodeLoudnessPacking, AllOnesOfTheWidestRange) {
    const double highest = 0.0;
    unsigned out = 0;
    EXPECT_TRUE(encode(out, MomentaryLoudness, highest, &highest, &highest));
    EXPECT_EQ(out, 1000u << 22 | 1u << 21 | 1000u << 11 | 1u << 10 | 1000u);
}

TEST(EncodeLoudnessPacking, OneValueOutOfRangeFailsAll) {
    const double good = -23.0;
    const double bad = -1.0;
    unsigned out = 7;
    EXPECT_FALSE(encode(out, ProgramLoudness, good, &bad, nullptr));
    EXPECT_FALSE(encode(out, ProgramLoudness, good, &good, &bad));
    EXPECT_FALSE(encode(out, ProgramLoudness, bad, &good, &good));
    EXPECT_EQ(out, 7u);
}

// Values arrive as tenths, divided by ten and multiplied by ten again in double precision.
TEST(EncodeLoudnessPacking, TenthsSurviveTheRoundTrip) {
    for (int tenths = -1000; tenths <= 0; ++tenths) {
        unsigned out = 0;
        ASSERT_TRUE(encode(out, ShortTermLoudness, tenths / 10.0, nullptr, nullptr)) << tenths;
        EXPECT_EQ(out >> 22, static_cast<unsigned>(tenths + 1000));
    }
}

}  // namespace vela::loudness::codec
