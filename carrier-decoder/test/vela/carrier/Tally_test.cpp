#include <gtest/gtest.h>

#include <cmath>
#include <vector>
#include <vela/carrier/Tally.hpp>

namespace vela::carrier {
namespace {

TEST(ErrorOf, StopsAtMinus144ForEqualSignals) {
    const std::vector<int> x = {1, -2, 3};
    const BlockError error = error_of(x, x);
    EXPECT_EQ(error.rms_db, -144.0);
    EXPECT_EQ(error.peak_db, -144.0);
}

TEST(ErrorOf, IsZeroDecibelsForAFullScaleDifference) {
    const std::vector<int> x(8, -0x800000), zeros(8, 0);
    const BlockError error = error_of(x, zeros);
    EXPECT_DOUBLE_EQ(error.rms_db, 0.0);
    EXPECT_DOUBLE_EQ(error.peak_db, 0.0);
}

TEST(ErrorOf, TellsThePeakFromTheMean) {
    const std::vector<int> x = {0x400000, 0, 0, 0}, zeros(4, 0);
    const BlockError error = error_of(x, zeros);
    EXPECT_NEAR(error.peak_db, 20 * std::log10(0.5), 1e-12);
    EXPECT_NEAR(error.rms_db, 20 * std::log10(0.25), 1e-12);
}

TEST(Tally, IsSilentWithoutErrors) {
    const Figures figures = Tally().figures();
    EXPECT_EQ(figures.rms_db, -3000.0);
    EXPECT_EQ(figures.peak_db, -3000.0);
    EXPECT_EQ(figures.crest, 1.0);
}

TEST(Tally, KeepsCrestOneForSilence) {
    Tally tally;
    tally.add(-3000, -3000);
    EXPECT_EQ(tally.figures().rms_db, -3000.0);
    EXPECT_EQ(tally.figures().crest, 1.0);
}

TEST(Tally, TakesTheMeanOfSquaresAndTheHighestPeak) {
    Tally tally;
    tally.add(-20, -6);
    tally.add(-3000, -10);
    const Figures figures = tally.figures();
    EXPECT_NEAR(figures.rms_db, 10 * std::log10(0.01 / 2), 1e-12);
    EXPECT_NEAR(figures.peak_db, -6, 1e-12);
    EXPECT_NEAR(figures.crest, std::pow(10, -0.3) / std::sqrt(0.005), 1e-12);
}

}  // namespace
}  // namespace vela::carrier
