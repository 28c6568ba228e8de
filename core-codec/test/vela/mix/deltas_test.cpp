#include <gtest/gtest.h>

#include <limits>
#include <vela/mix/deltas.hpp>

#include "slow.hpp"

namespace vela::mix {
namespace {

using slow::Channels;
using slow::Vector;

/// Of two or three channels; every value is overwritten.
Vector deltas_of(const Channels& x) {
    Vector d(x[0].size() * (x.size() - 1), 12345);
    EXPECT_TRUE(x.size() == 2 ? deltas(d, x[0], x[1]) : deltas(d, x[0], x[1], x[2]));
    return d;
}

TEST(Deltas, TwoChannelsByHand) {
    //                      anchors  4      -6                  -2     10
    EXPECT_EQ(deltas_of({{5, 9, -7, 3}, {2, -3, 8, 11}}), (Vector{0, 10, 4, 0}));
    //                      anchors  4      -6    0                -2     10
    EXPECT_EQ(deltas_of({{5, 9, -7, 3, 1}, {2, -3, 8, 11, 6}}), (Vector{0, 10, 4, 6, 0}));
}

TEST(Deltas, ThreeChannelsOfSevenEndInEveryWayThereIs) {
    // x0 ends at an anchor, x1 two samples after one, x2 one sample after one.
    const Channels x{{10, 7, -5, -13, 2, 9, 21},  //
                     {3, 6, 1, 8, 15, 20, 30},
                     {-1, -2, -3, 4, 5, -9, 17}};
    EXPECT_EQ(deltas_of(x), (Vector{0, 0, 4, 0, 2, -6, -5, 9, 6, 12, -3, 0, 2, 0}));
}

TEST(Deltas, AreWhatTheDefinitionGivesForEveryLength) {
    std::mt19937 engine(1);
    for (std::size_t nr = 2; nr <= 3; ++nr) {
        for (std::size_t size = 2 * nr; size < 70; ++size) {
            SCOPED_TRACE(testing::Message() << nr << " channels of " << size);
            for (const unsigned bits : {3u, 16u, 24u}) {
                const Channels x = slow::random_channels(engine, nr, size, bits);
                ASSERT_EQ(deltas_of(x), slow::deltas(x));
            }
        }
    }
}

TEST(Deltas, OfChannelsThatRunStraightAreZeroBetweenAnchors) {
    Vector ramp;
    for (int t = 0; t < 40; ++t)
        ramp.push_back(2 * t);
    EXPECT_EQ(deltas_of({ramp, ramp}), Vector(40, 0));
}

TEST(Deltas, WrapForSamplesThatFillAllThirtyTwoBits) {
    const int low = std::numeric_limits<int>::min();
    const int high = std::numeric_limits<int>::max();
    // Two anchors of the smallest integer wrap to a sum of 0.
    const Vector x{low, high, low, high};
    EXPECT_EQ(deltas_of({x, Vector(4, 0)}), (Vector{0, high, 0, 0}));
    // The anchors of x0 round up from high to low, 1 above it.
    EXPECT_EQ(deltas_of({Vector(6, high), Vector(6, 0), Vector(6, 0)}),
              (Vector{0, 0, -1, 0, -1, 0, 0, 0, -1, 0, -1, 0}));
}

TEST(Deltas, RefuseTooFewSamplesAndSizesThatDisagree) {
    const Vector three(3), four(4), five(5), six(6), seven(7);
    Vector d3(3), d4(4), d5(5), d10(10), d12(12), d13(13);
    EXPECT_FALSE(deltas(d3, three, three));
    EXPECT_FALSE(deltas(d4, four, five));
    EXPECT_FALSE(deltas(d5, four, five));
    EXPECT_FALSE(deltas(d5, four, four));
    EXPECT_TRUE(deltas(d4, four, four));

    EXPECT_FALSE(deltas(d10, five, five, five));
    EXPECT_FALSE(deltas(d12, six, seven, six));
    EXPECT_FALSE(deltas(d12, six, six, seven));
    EXPECT_FALSE(deltas(d13, six, six, six));
    EXPECT_TRUE(deltas(d12, six, six, six));
    EXPECT_FALSE(deltas({}, {}, {}));
}

}  // namespace
}  // namespace vela::mix
