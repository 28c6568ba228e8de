#include <gtest/gtest.h>

#include <cmath>
#include <vela/audio/Quality.hpp>

namespace vela::audio {
namespace {

TEST(Quality, NothingMeasured) {
    const Quality quality;
    EXPECT_EQ(quality.db_rms(), -3000.0);
    EXPECT_EQ(quality.db_peak(), -3000.0);
    EXPECT_EQ(quality.crest(), 1.0);
}

TEST(Quality, OneMeasurementComesBack) {
    Quality quality;
    quality.update_db(-60.0, -40.0);
    EXPECT_EQ(quality.count, 1u);
    EXPECT_NEAR(quality.db_rms(), -60.0, 1e-12);
    EXPECT_NEAR(quality.db_peak(), -40.0, 1e-12);
    EXPECT_NEAR(quality.crest(), 10.0, 1e-12);
}

TEST(Quality, MeanOfSquaresAndLargestPeak) {
    Quality quality;
    quality.update_db(0.0, -6.0);
    quality.update_db(-20.0, -3.0);
    quality.update_db(-20.0, -9.0);
    EXPECT_EQ(quality.count, 3u);
    const double rms = std::sqrt((1.0 + 0.1 * 0.1 + 0.1 * 0.1) / 3);
    EXPECT_DOUBLE_EQ(quality.db_rms(), 20.0 * std::log10(rms));
    EXPECT_DOUBLE_EQ(quality.db_peak(), -3.0);
    EXPECT_DOUBLE_EQ(quality.crest(), std::pow(10.0, -3.0 / 20.0) / rms);
}

TEST(Quality, SilenceCountsAsAMeasurementWithoutError) {
    Quality quality;
    quality.update_db(-3000.0, -3000.0);
    EXPECT_EQ(quality.count, 1u);
    EXPECT_EQ(quality.sum_sq, 0.0);
    EXPECT_EQ(quality.peak, 0.0);
    EXPECT_EQ(quality.db_rms(), -3000.0);
    EXPECT_EQ(quality.crest(), 1.0);

    quality.update_db(-20.0, -20.0);
    EXPECT_DOUBLE_EQ(quality.db_rms(), 20.0 * std::log10(std::sqrt(0.01 / 2)));
}

TEST(Quality, TheFloorOf24BitsIsALevelLikeAnyOther) {
    Quality quality;
    quality.update_db(-144.0, -144.0);
    EXPECT_GT(quality.sum_sq, 0.0);
    EXPECT_NEAR(quality.db_rms(), -144.0, 1e-10);
    EXPECT_DOUBLE_EQ(quality.crest(), 1.0);
}

TEST(Quality, PeakAloneHasNoCrest) {
    Quality quality;
    quality.update_db(-3000.0, 0.0);
    EXPECT_EQ(quality.db_peak(), 0.0);
    EXPECT_EQ(quality.crest(), 1.0);
}

}  // namespace
}  // namespace vela::audio
