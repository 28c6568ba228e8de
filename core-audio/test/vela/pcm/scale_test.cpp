#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vela/audio/frame_of.hpp>
#include <vela/pcm/scale.hpp>

namespace vela::pcm {
namespace {

using audio::frame_of;
using audio::samples_of;

constexpr int lowest = std::numeric_limits<int>::min();
constexpr float infinity = std::numeric_limits<float>::infinity();

struct Case {
    const char* why;
    float f;
    int x;
    int product;
    int quotient;
};

TEST(Scale, SinglePrecisionCutTowardZero) {
    const std::array cases{
        Case{"plain", 2.0f, 7, 14, 3},
        Case{"toward zero from below", 2.0f, -7, -14, -3},
        Case{"fraction", 1.5f, 3, 4, 2},
        Case{"fraction from below", 1.5f, -3, -4, -2},
        Case{"the product is rounded to 24 bits before the cut", 1.011579454f, 8388607, 8485743,
             8292583},
        Case{"the 25th bit is lost on the way in", 2.0f, 16777217, 33554432, 8388608},
        Case{"unity keeps all bits", 1.0f, 16777217, 16777217, 16777217},
        Case{"product too large", 256.0f, 8388608, lowest, 32768},
        Case{"lowest product", 256.0f, -8388608, lowest, -32768},
        Case{"silencing", infinity, 5, lowest, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.why);
        auto frame = frame_of({c.x});
        EXPECT_TRUE(multiply_by(c.f, frame));
        EXPECT_EQ(samples_of(frame), std::vector{c.product});
        frame = frame_of({c.x});
        EXPECT_TRUE(divide_by(c.f, frame));
        EXPECT_EQ(samples_of(frame), std::vector{c.quotient});
    }
}

TEST(Scale, DivisionByZeroIsRefused) {
    auto frame = frame_of({3});
    EXPECT_FALSE(divide_by(0.0f, frame));
    EXPECT_EQ(samples_of(frame), std::vector{3});
}

TEST(Scale, UnityKeepsSamplesShared) {
    const auto original = frame_of({1});
    auto copy = original;
    EXPECT_TRUE(multiply_by(1.0f, copy));
    EXPECT_TRUE(divide_by(1.0f, copy));
    EXPECT_EQ(copy.samples().data(), original.samples().data());
}

TEST(Scale, LeavesSharersAlone) {
    const auto original = frame_of({10});
    auto up = original;
    auto down = original;
    EXPECT_TRUE(multiply_by(2.0f, up));
    EXPECT_TRUE(divide_by(2.0f, down));
    EXPECT_EQ(samples_of(original), std::vector{10});
    EXPECT_EQ(samples_of(up), std::vector{20});
    EXPECT_EQ(samples_of(down), std::vector{5});
}

}  // namespace
}  // namespace vela::pcm
