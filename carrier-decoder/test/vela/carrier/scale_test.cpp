#include <gtest/gtest.h>

#include <vector>
#include <vela/carrier/scale.hpp>

namespace vela::carrier {
namespace {

using Signal = std::vector<int>;

TEST(RestoreLevel, ShiftsAboveTheBitLinesWithoutAGroupScaler) {
    Signal samples = {0, 1, -1, 0x1FFF, -0x2000};
    restore_level(samples, 10, 0);
    EXPECT_EQ(samples, (Signal{0, 1024, -1024, 0x1FFF * 1024, -0x800000}));
}

TEST(RestoreLevel, MultipliesInSinglePrecisionAndCutsTowardZero) {
    // index 1 is 1.011579454, 8.0926357 with three bit-lines
    Signal samples = {1, -1, 100, -100, 1000003, -1000003};
    restore_level(samples, 3, 1);
    const float gain = 8 * 1.011579454f;
    const int large = static_cast<int>(1000003.0f * gain);
    EXPECT_EQ(samples, (Signal{8, -8, 809, -809, large, -large}));
}

TEST(RestoreLevel, IsExactAtEverySixDecibels) {
    Signal samples = {3, -5};
    restore_level(samples, 4, 60);
    EXPECT_EQ(samples, (Signal{96, -160}));
}

TEST(Attenuate, DividesAndIsTakenBackUpToRounding) {
    Signal samples = {1000, -1001, 7};
    attenuate(samples, 60);
    EXPECT_EQ(samples, (Signal{500, -500, 3}));
    undo_attenuation(samples, 60);
    EXPECT_EQ(samples, (Signal{1000, -1000, 6}));
}

TEST(Attenuate, LeavesIndexZeroAlone) {
    Signal samples = {0x7FFFFF, -0x800000};
    attenuate(samples, 0);
    undo_attenuation(samples, 0);
    EXPECT_EQ(samples, (Signal{0x7FFFFF, -0x800000}));
}

TEST(Attenuate, MutesWhereTheGainIsInfiniteAndCannotTakeItBack) {
    Signal samples = {0x7FFFFF, -1};
    attenuate(samples, 255);
    EXPECT_EQ(samples, (Signal{0, 0}));
    undo_attenuation(samples, 255);
    EXPECT_EQ(samples, (Signal{0, 0}));
}

}  // namespace
}  // namespace vela::carrier
