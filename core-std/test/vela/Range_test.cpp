#include <gtest/gtest.h>

#include <numeric>
#include <utility>
#include <vector>
#include <vela/Range.hpp>

namespace vela {
namespace {

TEST(Range, ADefaultOneIsNotValidAndHasNoLength) {
    const Range<int*> range;
    EXPECT_FALSE(range.valid());
    EXPECT_EQ(range.size(), 0u);
    EXPECT_TRUE(range.empty());
}

TEST(Range, OfTwoIteratorsIsValidEvenIfEmpty) {
    int values[] = {1, 2, 3};
    const Range<int*> all(values, values + 3);
    EXPECT_TRUE(all.valid());
    EXPECT_EQ(all.size(), 3u);
    EXPECT_FALSE(all.empty());
    EXPECT_EQ(std::accumulate(all.begin(), all.end(), 0), 6);

    const Range<int*> none(values, values);
    EXPECT_TRUE(none.valid());
    EXPECT_TRUE(none.empty());
}

TEST(Range, CopiesAndMovesCarryTheFlag) {
    int values[] = {1, 2};
    const Range<int*> range(values, values + 2);
    const auto copy = range;
    EXPECT_TRUE(copy.valid());
    EXPECT_EQ(copy.size(), 2u);

    Range<int*> target;
    target = Range<int*>(values, values + 1);
    EXPECT_TRUE(target.valid());
    EXPECT_EQ(target.size(), 1u);
    target = Range<int*>();
    EXPECT_FALSE(target.valid());
}

TEST(Range, IsWalkedByMovingItsBegin) {
    std::vector<int> values{4, 5, 6};
    Range range(values.begin(), values.end());
    ++range.begin();
    EXPECT_EQ(range.size(), 2u);
    EXPECT_EQ(*range.begin(), 5);
    for (int& value : range)
        value = 0;
    EXPECT_EQ(values, (std::vector<int>{4, 0, 0}));
}

}  // namespace
}  // namespace vela
