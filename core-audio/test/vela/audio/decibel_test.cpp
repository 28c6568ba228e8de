#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>
#include <vela/audio/decibel.hpp>

namespace vela::audio {
namespace {

constexpr int full_scale = 0x800000;

TEST(Decibel, LinearToDb) {
    EXPECT_EQ(linear_to_db(1.0), 0.0);
    EXPECT_EQ(linear_to_db(0.1), -20.0);
    EXPECT_EQ(linear_to_db(100.0), 40.0);
}

TEST(Decibel, NothingHasALevelAllTheSame) {
    EXPECT_EQ(linear_to_db(0.0), -3000.0);
    EXPECT_EQ(linear_to_db(-1.0), -3000.0);
    EXPECT_EQ(linear_to_db(1e-150), -3000.0);
    EXPECT_GT(linear_to_db(1.0000001e-150), -3000.0);
    EXPECT_EQ(linear_to_db(std::numeric_limits<double>::quiet_NaN()), -3000.0);
}

TEST(Decibel, DbToLinear) {
    EXPECT_EQ(db_to_linear(0.0), 1.0);
    EXPECT_EQ(db_to_linear(20.0), 10.0);
    EXPECT_EQ(db_to_linear(-144.0), std::pow(10.0, -7.2));
    EXPECT_EQ(db_to_linear(-3000.0), 0.0);
    EXPECT_EQ(db_to_linear(-3001.0), 0.0);
    EXPECT_GT(db_to_linear(-2999.0), 0.0);
}

double delta_peak(const std::vector<int>& a, const std::vector<int>& b) {
    return dB_delta_peak_container(Delta::between(a, b), full_scale, -144.0);
}

TEST(DeltaPeak, LargestDifferenceOfEitherSign) {
    EXPECT_EQ(delta_peak({0, 0, 5}, {full_scale, 9, 5}), 0.0);
    EXPECT_EQ(delta_peak({0, 7}, {100, 0}), 20.0 * std::log10(100.0 / full_scale));
}

TEST(DeltaPeak, EqualSignalsLieOnTheFloor) {
    EXPECT_EQ(delta_peak({1, 2, 3}, {1, 2, 3}), -144.0);
    EXPECT_EQ(delta_peak({}, {}), -144.0);
}

TEST(DeltaPeak, FloorIsWhereTheRatioReachesIt) {
    // One step of 24 bits lies at -138.5 dB: above a floor of -144, below one of -120.
    EXPECT_EQ(delta_peak({1}, {0}), 20.0 * std::log10(1.0 / full_scale));
    const Delta one{.peak = 1};
    EXPECT_EQ(dB_delta_peak_container(one, full_scale, -120.0), -120.0);
    EXPECT_EQ(dB_delta_peak_container(one, 10, -20.0), -20.0);
}

TEST(DeltaPeak, DifferencesWrap) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    EXPECT_EQ(delta_peak({highest}, {lowest}), 20.0 * std::log10(1.0 / full_scale));
}

}  // namespace
}  // namespace vela::audio
