#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vela/audio/frame_of.hpp>
#include <vela/pcm/shift.hpp>

namespace vela::pcm {
namespace {

using audio::frame_of;
using audio::samples_of;

constexpr int lowest = std::numeric_limits<int>::min();

struct Case {
    unsigned n;
    int x;
    int left;
    int right;
};

TEST(Shift, EveryCountScalesByItsPowerOfTwo) {
    const std::array cases{
        //   n         x         left    right
        Case{0, 5, 5, 5},
        Case{1, -3, -6, -2},
        Case{3, 7, 56, 0},
        Case{3, -1, -8, -1},
        Case{8, 0x7FFFFF, 0x7FFFFF00, 0x7FFF},
        Case{8, -0x800000, lowest, -0x8000},
        Case{12, 0x7FFFFF, -4096, 0x7FF},
        Case{24, 1, 1 << 24, 0},
        Case{24, -1, -(1 << 24), -1},
        Case{24, 0x180, lowest, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.x << " by " << c.n);
        auto frame = frame_of({c.x});
        EXPECT_TRUE(shift_left(c.n, frame));
        EXPECT_EQ(samples_of(frame), std::vector{c.left});
        frame = frame_of({c.x});
        EXPECT_TRUE(shift_right(c.n, frame.write_range()));
        EXPECT_EQ(samples_of(frame), std::vector{c.right});
    }
}

TEST(Shift, WiderThanASampleIsRefused) {
    auto frame = frame_of({1, 2});
    EXPECT_FALSE(shift_left(25, frame));
    EXPECT_FALSE(shift_right(25, frame.write_range()));
    EXPECT_EQ(samples_of(frame), (std::vector{1, 2}));
}

TEST(Shift, LeftLeavesSharersAlone) {
    const auto original = frame_of({1, -2});
    auto copy = original;
    EXPECT_TRUE(shift_left(4, copy));
    EXPECT_EQ(samples_of(original), (std::vector{1, -2}));
    EXPECT_EQ(samples_of(copy), (std::vector{16, -32}));
}

TEST(Shift, LeftByNothingStillMakesTheSamplesPrivate) {
    const auto original = frame_of({1});
    auto copy = original;
    EXPECT_TRUE(shift_left(0, copy));
    EXPECT_NE(copy.samples().data(), original.samples().data());
}

TEST(Shift, NothingToShift) {
    audio::Frame empty;
    EXPECT_TRUE(shift_left(3, empty));
    EXPECT_TRUE(shift_right(3, Range<int*>()));
}

}  // namespace
}  // namespace vela::pcm
