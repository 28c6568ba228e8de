#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <vela/mix/mix3/Train.hpp>

namespace vela::mix::mix3 {
namespace {

using Center = std::array<int, 2>;

/// The first samples of three channels.  What follows from them without centers:
///
///     t     2   3    4    5         rest at t    prediction, slope
///     y0        4    5    7         5 at 4       5, 1: 7 at 5, anchor 8 at 6
///     y1        6    8    9         9 at 5
///     y2    8   9   11   12         9 at 3       9, 1: 11 at 4, anchor 12 at 5
struct Start {
    int y0[7] = {0, 1, 2, 4};
    int y1[7] = {0, 4, 5, 6, 8};
    int y2[7] = {0, 0, 8};
    Train<int*> train{&y0[2], &y1[2], &y2[2]};
};

TEST(Train, SolvesOneChannelAndForetellsItsNextTwoSamples) {
    Start s;
    s.train.proceed<3>(3, 4 + 6 + 9, Center{0, 0});
    s.train.proceed<2>(4, 5 + 8 + 11, Center{0, 0});
    s.train.proceed<1>(5, 7 + 9 + 12, Center{0, 0});
    EXPECT_THAT(s.y0, testing::ElementsAre(0, 1, 2, 4, 5, 7, 0));
    EXPECT_THAT(s.y1, testing::ElementsAre(0, 4, 5, 6, 8, 9, 0));
    EXPECT_THAT(s.y2, testing::ElementsAre(0, 0, 8, 9, 11, 12, 0));
}

TEST(Train, AddsCentersToWhatIsFinishedAndSolvedButNotToPredictions) {
    Start s;
    s.train.proceed<3>(3, 4 + 106 + 1009, Center{100, 1000});
    s.train.proceed<3>(4, 35 + 8 + 51, Center{30, 40});
    s.train.proceed<3>(5, 14 + 11 + 12, Center{7, 2});
    EXPECT_THAT(s.y0, testing::ElementsAre(0, 1, 2, 4, 5 + 30, 7 + 7, 0));
    EXPECT_THAT(s.y1, testing::ElementsAre(0, 4, 5, 6 + 100, 8, 9 + 2, 0));
    EXPECT_THAT(s.y2, testing::ElementsAre(0, 0, 8, 9 + 1000, 11 + 40, 12, 0));
}

}  // namespace
}  // namespace vela::mix::mix3
