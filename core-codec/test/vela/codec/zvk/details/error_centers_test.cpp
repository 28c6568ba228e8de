#include <gtest/gtest.h>

#include <vela/codec/zvk/details/error_centers.hpp>

namespace vela::codec::zvk::details {

struct Class {
    std::uint32_t ix;
    std::uint32_t slots;
};

// The ends of each run of classes.
const Class classes[] = {{0, 8},    {1, 10},   {2, 12},   {3, 14},     {4, 16},
                         {5, 20},   {6, 24},   {15, 60},  {16, 64},    {17, 72},
                         {83, 600}, {84, 632}, {85, 648}, {254, 3352}, {255, 3368}};

TEST(ErrorCenters, SlotsOfAClass) {
    for (const Class& c : classes)
        EXPECT_EQ(nr_error_centers_per_index(c.ix), c.slots) << c.ix;
}

TEST(ErrorCenters, EveryCountGetsTheSmallestClassThatHoldsIt) {
    std::uint32_t smallest = 0;
    for (std::uint32_t count = 0; count <= 4000; ++count) {
        while (nr_error_centers_per_index(smallest) < count)
            ++smallest;
        ASSERT_EQ(error_center_index(count), smallest) << count;
    }
}

}  // namespace vela::codec::zvk::details
