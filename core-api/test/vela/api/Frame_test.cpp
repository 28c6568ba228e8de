#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <vector>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frame.hpp>

namespace vela::api {
namespace {

using IntFrame = Frame<int, ChannelVariant>;

std::vector<int> samples_of(const IntFrame& frame) {
    return {frame.samples().begin(), frame.samples().end()};
}

TEST(Frame, ADefaultOneIsEmptyAndBelongsToNoChannel) {
    IntFrame frame;
    EXPECT_FALSE(frame.key.channel.valid());
    EXPECT_EQ(frame.key.variant, 0u);
    EXPECT_EQ(frame.bit_depth, 0u);
    EXPECT_EQ(frame.size(), 0u);
    EXPECT_TRUE(frame.samples().empty());
    EXPECT_TRUE(frame.write().empty());
    EXPECT_TRUE(frame.write_range().valid());
    EXPECT_TRUE(frame.write_range().empty());
}

TEST(Frame, OfASizeStartsAsZerosOfUnknownDepth) {
    const IntFrame frame(3);
    EXPECT_FALSE(frame.key.channel.valid());
    EXPECT_EQ(frame.bit_depth, 0u);
    EXPECT_EQ(samples_of(frame), (std::vector<int>{0, 0, 0}));

    const IntFrame keyed(ChannelVariant(channel::Top, 2), 1);
    EXPECT_EQ(keyed.key, ChannelVariant(channel::Top, 2));
    EXPECT_EQ(keyed.bit_depth, 0u);
    EXPECT_EQ(samples_of(keyed), std::vector<int>{0});
}

TEST(Frame, WritingThroughACopyLeavesTheFirstAlone) {
    IntFrame first(ChannelVariant(channel::Left), 3);
    first.bit_depth = 24;
    std::ranges::fill(first.write(), 7);

    IntFrame copy = first;
    EXPECT_EQ(copy.key, first.key);
    EXPECT_EQ(copy.bit_depth, 24u);
    EXPECT_EQ(copy.samples().data(), first.samples().data());

    copy.write()[1] = -8388608;
    EXPECT_EQ(samples_of(first), (std::vector<int>{7, 7, 7}));
    EXPECT_EQ(samples_of(copy), (std::vector<int>{7, -8388608, 7}));

    first = copy;
    EXPECT_EQ(first.samples().data(), copy.samples().data());
    std::ranges::fill(first.write_range(), 0);
    EXPECT_EQ(samples_of(copy), (std::vector<int>{7, -8388608, 7}));
}

TEST(Frame, IsSharedWhileThereAreCopiesThatNobodyWroteTo) {
    EXPECT_FALSE(IntFrame().is_shared());
    IntFrame frame(4);
    EXPECT_FALSE(frame.is_shared());
    {
        const IntFrame copy = frame;
        EXPECT_TRUE(frame.is_shared());
    }
    EXPECT_FALSE(frame.is_shared());
    IntFrame copy = frame;
    copy.write()[0] = 1;
    EXPECT_FALSE(frame.is_shared());
    EXPECT_FALSE(copy.is_shared());
}

TEST(Frame, OverwritingACopyLeavesTheFirstAlone) {
    IntFrame first(ChannelVariant(channel::Left), 3);
    first.bit_depth = 24;
    IntFrame copy = first;
    std::ranges::fill(copy.overwrite(), 7);
    EXPECT_EQ(copy.key, first.key);
    EXPECT_EQ(copy.bit_depth, 24u);
    EXPECT_EQ(samples_of(copy), (std::vector<int>{7, 7, 7}));
    EXPECT_EQ(samples_of(first), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(copy.overwrite().data(), copy.samples().data());
    EXPECT_TRUE(IntFrame().overwrite().empty());
}

TEST(Frame, SetDataOfTheSameLengthKeepsAnUnsharedBuffer) {
    IntFrame frame(3);
    const int* const buffer = frame.samples().data();
    const std::vector<int> values{1, 2, 3};
    frame.set_data(values.begin(), values.end());
    EXPECT_EQ(frame.samples().data(), buffer);
    EXPECT_EQ(samples_of(frame), values);
}

TEST(Frame, SetDataOnASharedBufferLeavesTheOtherAlone) {
    IntFrame frame(2);
    const IntFrame copy = frame;
    const std::vector<int> values{1, 2};
    frame.set_data(values.begin(), values.end());
    EXPECT_EQ(samples_of(frame), values);
    EXPECT_EQ(samples_of(copy), (std::vector<int>{0, 0}));
}

TEST(Frame, SetDataOfAnotherLengthTakesThatLength) {
    IntFrame frame(ChannelVariant(channel::Left), 3);
    frame.bit_depth = 24;
    for (const std::list<int>& values : {std::list<int>{1, 2, 3, 4, 5}, std::list<int>{6}, {}}) {
        frame.set_data(values.begin(), values.end());
        EXPECT_EQ(samples_of(frame), (std::vector<int>{values.begin(), values.end()}));
        EXPECT_EQ(frame.key, ChannelVariant(channel::Left));
        EXPECT_EQ(frame.bit_depth, 24u);
    }
}

}  // namespace
}  // namespace vela::api
