#include <gtest/gtest.h>

#include <algorithm>
#include <vela/api/AudioBlock.hpp>

namespace vela::api {
namespace {

using Block = AudioBlock<const int>;
using IntFrames = Frames<int, ChannelVariant>;

// What is left over from the block before.
Block used_block() {
    static const int old = 0;
    Block block;
    block.bit_depth = 16;
    block.frame_size = 77;
    block.channel.fill(&old);
    return block;
}

bool has_no_channel(const Block& block) {
    return std::ranges::all_of(block.channel,
                               [](const int* samples) { return samples == nullptr; });
}

TEST(AudioBlock, HasOnePlacePerChannel) {
    const Block block;
    EXPECT_EQ(block.channel.size(), 25u);
    EXPECT_TRUE(has_no_channel(block));
}

TEST(AudioBlock, OfNoFramesFailsAndIsCleared) {
    Block block = used_block();
    EXPECT_FALSE(convert(block, IntFrames()));
    EXPECT_EQ(block.frame_size, 0u);
    EXPECT_TRUE(has_no_channel(block));
}

TEST(AudioBlock, PointsToTheSamplesWithoutACopy) {
    IntFrames frames;
    frames.goc(ChannelVariant(channel::Left), 4, 24);
    frames.goc(ChannelVariant(channel::Ambisonics), 4, 24);
    const IntFrames shared = frames;
    Block block = used_block();
    ASSERT_TRUE(convert(block, frames));
    EXPECT_EQ(block.bit_depth, 24u);
    EXPECT_EQ(block.frame_size, 4u);
    const auto* const left = shared.find(ChannelVariant(channel::Left));
    const auto* const ambisonics = shared.find(ChannelVariant(channel::Ambisonics));
    EXPECT_EQ(block.channel[0], left->samples().data());
    EXPECT_EQ(block.channel[24], ambisonics->samples().data());
    EXPECT_EQ(std::ranges::count(block.channel, nullptr), 23);
}

TEST(AudioBlock, TakesMainSignalsAlone) {
    IntFrames frames;
    frames.goc(ChannelVariant(channel::Left, 1), 4, 24);
    Block block;
    ASSERT_TRUE(convert(block, frames));
    EXPECT_TRUE(has_no_channel(block));

    const auto& main = frames.goc(ChannelVariant(channel::Left, 0), 4, 24);
    ASSERT_TRUE(convert(block, frames));
    EXPECT_EQ(block.channel[0], main.samples().data());
}

TEST(AudioBlock, FailsIfSizesOrDepthsDiffer) {
    IntFrames frames;
    frames.goc(ChannelVariant(channel::Left), 4, 24);
    frames.goc(ChannelVariant(channel::Right), 8, 24);
    Block block = used_block();
    EXPECT_FALSE(convert(block, frames));
    frames.goc(ChannelVariant(channel::Right), 4, 16);
    EXPECT_FALSE(convert(block, frames));
    EXPECT_TRUE(has_no_channel(block));
    frames.goc(ChannelVariant(channel::Right), 4, 24);
    EXPECT_TRUE(convert(block, frames));
}

}  // namespace
}  // namespace vela::api
