#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>
#include <vela/limiter/Limiter.hpp>

namespace vela::limiter {
namespace {

using Limiter24 = Limiter<int, LinearScaler>;
using Vector = std::vector<int>;
constexpr int threshold = 8304720;

Limiter24::Frame frame(const Vector& samples) {
    Limiter24::Frame made;
    made.set_data(samples.begin(), samples.end());
    return made;
}

struct Case {
    const char* name;
    Vector a, b, c;
    ReturnCode code;
    unsigned char ix;
};

constexpr int lowest = std::numeric_limits<int>::min();

const Case cases[] = {
    {"Empty", {}, {}, {}, ReturnCode::nothing, 0},
    {"Quiet", {1, -2}, {3, 4}, {0, 0}, ReturnCode::nothing, 0},
    {"AtThreshold", {threshold - 5}, {5}, {0}, ReturnCode::nothing, 0},
    {"AtThresholdBelowZero", {-threshold}, {5}, {-5}, ReturnCode::nothing, 0},
    // One above the threshold is 1.00000012, a float of its own just above 1.
    {"JustAbove", {threshold}, {1}, {0}, ReturnCode::scaled, 1},
    {"Twice", {0, threshold}, {0, threshold}, {0, 0}, ReturnCode::scaled, 60},
    {"TwiceBelowZero", {0, -threshold}, {0, -threshold}, {0, 0}, ReturnCode::scaled, 60},
    {"OneSampleDecides",
     {1, 2, threshold, 3},
     {0, 0, threshold, 0},
     {0, 0, 0, 0},
     ReturnCode::scaled,
     60},
    {"PeaksThatCancel", {threshold}, {threshold}, {-threshold}, ReturnCode::nothing, 0},
    {"PeaksApart", {threshold, 0}, {0, threshold}, {0, 0}, ReturnCode::nothing, 0},
    {"SixteenTimes", {8 * threshold}, {8 * threshold}, {0}, ReturnCode::scaled, 240},
    {"MoreThanTheTable", {8 * threshold}, {9 * threshold}, {0}, ReturnCode::out_of_range, 0},
    {"SumWithoutMagnitude", {lowest}, {0}, {0}, ReturnCode::nothing, 0},
    {"SumThatWraps", {lowest}, {lowest}, {7}, ReturnCode::nothing, 0},
};

TEST(Limiter, FindsTheGainThatThreeChannelsNeed) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Limiter24 limiter(24, threshold);
        EXPECT_EQ(limiter.analyse(frame(c.a), frame(c.b), frame(c.c)), c.code);
        EXPECT_EQ(limiter.analyse(frame(c.c), frame(c.a), frame(c.b)), c.code);
        EXPECT_EQ(limiter.scaler_ix, c.ix);
    }
}

TEST(Limiter, FindsTheGainThatTwoChannelsNeed) {
    for (const Case& c : cases) {
        if (std::ranges::any_of(c.c, [](int x) { return x != 0; })) continue;
        SCOPED_TRACE(c.name);
        Limiter24 limiter(24, threshold);
        EXPECT_EQ(limiter.analyse(frame(c.a), frame(c.b)), c.code);
        EXPECT_EQ(limiter.scaler_ix, c.ix);
    }
}

TEST(Limiter, RefusesFramesOfDifferentLength) {
    const auto one = frame({9999999}), two = frame({9999999, 9999999});
    Limiter24 limiter(24, threshold);
    EXPECT_EQ(limiter.analyse(one, two), ReturnCode::lengths_differ);
    EXPECT_EQ(limiter.analyse(two, one, one), ReturnCode::lengths_differ);
    EXPECT_EQ(limiter.analyse(one, two, one), ReturnCode::lengths_differ);
    EXPECT_EQ(limiter.analyse(one, one, two), ReturnCode::lengths_differ);
    EXPECT_EQ(limiter.scaler_ix, 0);
}

TEST(Limiter, GivesTheGainItselfBesideItsIndex) {
    Limiter24 limiter(24, threshold);
    ASSERT_EQ(limiter.analyse(frame({threshold}), frame({threshold})), ReturnCode::scaled);
    EXPECT_EQ(limiter.scaler, 2.0f);
}

TEST(Limiter, KeepsAnEarlierGainWhenItFindsNoOther) {
    Limiter24 limiter(24, threshold);
    ASSERT_EQ(limiter.analyse(frame({threshold}), frame({threshold})), ReturnCode::scaled);
    EXPECT_EQ(limiter.analyse(frame({0}), frame({0})), ReturnCode::nothing);
    EXPECT_EQ(limiter.analyse(frame({20 * threshold}), frame({0})), ReturnCode::out_of_range);
    EXPECT_EQ(limiter.scaler_ix, 60);
    EXPECT_EQ(limiter.scaler, 2.0f);
}

TEST(Limiter, LooksAtFramesThatAreSharedWithoutCopyingThem) {
    const auto a = frame({1, 2, 3});
    const auto b = a;
    Limiter24 limiter(24, threshold);
    EXPECT_EQ(limiter.analyse(a, b), ReturnCode::nothing);
    EXPECT_EQ(a.samples().data(), b.samples().data());
}

TEST(Limiter, CodesAreTheNumbersThatCallersKnow) {
    EXPECT_EQ(static_cast<int>(ReturnCode::nothing), 0);
    EXPECT_EQ(static_cast<int>(ReturnCode::out_of_range), 1);
    EXPECT_EQ(static_cast<int>(ReturnCode::lengths_differ), 3);
    EXPECT_EQ(static_cast<int>(ReturnCode::scaled), 4);
}

}  // namespace
}  // namespace vela::limiter
