#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vela/audio/frame_of.hpp>
#include <vela/limiter/hard_limit.hpp>

namespace vela::limiter {
namespace {

using audio::frame_of;
using audio::samples_of;

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

struct Case {
    unsigned bits;
    bool ok;
    std::array<int, 4> clamped;
};

TEST(HardLimit, ClampsToSignedBits) {
    const std::array cases{
        Case{0, true, {0, 0, 0, 0}},
        Case{1, true, {-1, -1, 0, 0}},
        Case{4, true, {-8, -8, 7, 7}},
        Case{24, true, {-8388608, -8388608, 8388607, 8388607}},
        Case{25, true, {-16777216, -8388609, 8388608, 16777215}},
        Case{31, true, {lowest / 2, -8388609, 8388608, highest / 2}},
        Case{32, true, {lowest, -8388609, 8388608, highest}},
        Case{33, false, {lowest, -8388609, 8388608, highest}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bits);
        auto frame = frame_of({lowest, -8388609, 8388608, highest});
        EXPECT_EQ(hard_limit(frame, c.bits), c.ok);
        EXPECT_EQ(samples_of(frame), std::vector(c.clamped.begin(), c.clamped.end()));
    }
}

TEST(HardLimit, SamplesInsideStayAsTheyAreAndShared) {
    const auto original = frame_of({-8388608, -1, 0, 1, 8388607});
    for (const unsigned bits : {24u, 32u}) {
        auto copy = original;
        EXPECT_TRUE(hard_limit(copy, bits));
        EXPECT_EQ(copy.samples().data(), original.samples().data());
    }
    EXPECT_EQ(samples_of(original), (std::vector{-8388608, -1, 0, 1, 8388607}));
}

TEST(HardLimit, WhatIsClampedIsClampedInNoOtherCopy) {
    const auto original = frame_of({1, -8388609, 2});
    auto copy = original;
    EXPECT_TRUE(hard_limit(copy, 24));
    EXPECT_EQ(samples_of(copy), (std::vector{1, -8388608, 2}));
    EXPECT_EQ(samples_of(original), (std::vector{1, -8388609, 2}));
}

}  // namespace
}  // namespace vela::limiter
