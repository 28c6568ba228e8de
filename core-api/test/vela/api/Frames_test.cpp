#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frames.hpp>

namespace vela::api {
namespace {

using IntFrame = Frame<int, ChannelVariant>;
using IntFrames = Frames<int, ChannelVariant>;

const ChannelVariant left(channel::Left);
const ChannelVariant right(channel::Right);

bool all_are(const IntFrame& frame, int value) {
    return std::ranges::all_of(frame.samples(), [=](int sample) { return sample == value; });
}

TEST(Frames, GocCreatesAnEmptyFrameOfUnknownDepth) {
    IntFrames frames;
    EXPECT_TRUE(frames.empty());
    const IntFrame& made = frames.goc(left);
    EXPECT_EQ(made.key, left);
    EXPECT_EQ(made.size(), 0u);
    EXPECT_EQ(made.bit_depth, 0u);
    EXPECT_EQ(frames.size(), 1u);
    EXPECT_EQ(&frames.goc(left), &made);
    EXPECT_EQ(frames.size(), 1u);
}

TEST(Frames, GocOfTheSameSizeKeepsSamplesAndDepth) {
    IntFrames frames;
    std::ranges::fill(frames.goc(left, 4, 24).write(), 5);
    const IntFrame& same = frames.goc(left, 4);
    EXPECT_TRUE(all_are(same, 5));
    EXPECT_EQ(same.bit_depth, 24u);
}

TEST(Frames, GocOfAnotherSizeStartsAfresh) {
    IntFrames frames;
    std::ranges::fill(frames.goc(left, 4, 24).write(), 5);
    const IntFrame& other = frames.goc(left, 3);
    EXPECT_EQ(other.size(), 3u);
    EXPECT_TRUE(all_are(other, 0));
    EXPECT_EQ(other.bit_depth, 0u);
    EXPECT_EQ(other.key, left);
}

TEST(Frames, GocWithADepthAlwaysLeavesThatDepth) {
    IntFrames frames;
    EXPECT_EQ(frames.goc(left, 4, 24).bit_depth, 24u);
    EXPECT_EQ(frames.goc(left, 4, 16).bit_depth, 16u);
    EXPECT_EQ(frames.goc(left, 5, 20).bit_depth, 20u);
}

TEST(Frames, SetStoresUnderTheFramesOwnKeyAndShares) {
    IntFrames frames;
    frames.goc(left, 9);
    const IntFrame frame(left, 2);
    const IntFrame& stored = frames.set(frame);
    EXPECT_EQ(frames.size(), 1u);
    EXPECT_EQ(frames.find(left), &stored);
    EXPECT_EQ(stored.samples().data(), frame.samples().data());
    frames.set(IntFrame(right, 1));
    EXPECT_EQ(frames.size(), 2u);
}

TEST(Frames, SetOfAFrameThatIsGivenAwayKeepsItsKeySamplesAndDepth) {
    IntFrames frames;
    for (int value = 5; value < 7; ++value) {
        IntFrame frame(left, 4);
        frame.bit_depth = 24;
        std::ranges::fill(frame.write(), value);
        const int* const samples = frame.samples().data();
        const IntFrame& stored = frames.set(std::move(frame));
        EXPECT_EQ(frames.find(left), &stored);
        EXPECT_EQ(stored.key, left);
        EXPECT_EQ(stored.bit_depth, 24u);
        EXPECT_EQ(stored.samples().data(), samples) << "not copied";
        EXPECT_TRUE(all_are(stored, value));
    }
    EXPECT_EQ(frames.size(), 1u);
}

TEST(Frames, SilenceLeavesOtherOwnersAndTheDepthAlone) {
    IntFrames frames;
    std::ranges::fill(frames.goc(left, 4, 24).write(), 5);
    const IntFrames shared = frames;
    const IntFrame& silent = frames.silence(left, 4);
    EXPECT_TRUE(all_are(silent, 0));
    EXPECT_EQ(silent.bit_depth, 24u);
    EXPECT_TRUE(all_are(*shared.find(left), 5));

    EXPECT_EQ(frames.silence(right, 2).size(), 2u);
    EXPECT_TRUE(all_are(*frames.find(right), 0));
    EXPECT_EQ(frames.silence(left, 0).size(), 0u);
}

TEST(Frames, FindCreatesNothing) {
    IntFrames frames;
    EXPECT_EQ(frames.find(left), nullptr);
    EXPECT_TRUE(frames.empty());
    frames.goc(left);
    EXPECT_NE(frames.find(left), nullptr);
    EXPECT_EQ(frames.find(ChannelVariant(channel::Left, 1)), nullptr);
}

TEST(Frames, CopiesShareSamples) {
    IntFrames frames;
    frames.goc(left, 4);
    IntFrames copy;
    copy.goc(right, 1);
    copy = frames;
    EXPECT_EQ(copy.size(), 1u);
    EXPECT_EQ(copy.find(left)->samples().data(), frames.find(left)->samples().data());
}

TEST(Frames, AreWalkedByChannelIdThenVariant) {
    IntFrames frames;
    const ChannelVariant second(channel::Left, 1);
    for (const auto& key : {right, second, left})
        frames.goc(key);
    std::vector<ChannelVariant> keys;
    for (const auto& [key, frame] : frames) {
        EXPECT_EQ(frame.key, key);
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<ChannelVariant>{left, second, right}));
}

template <typename Out>
void size_and_depth_are_agreed_on() {
    IntFrames frames;
    Out size = 99;
    Out depth = 98;
    EXPECT_FALSE(frames.frame_size(size));
    EXPECT_FALSE(frames.bit_depth(depth));
    EXPECT_EQ(size, 99u);
    EXPECT_EQ(depth, 98u);

    frames.goc(right, 8, 24);
    EXPECT_TRUE(frames.frame_size(size));
    EXPECT_TRUE(frames.bit_depth(depth));
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(depth, 24u);

    // The one that sorts first is told, though it came last.
    frames.goc(left, 4, 16);
    EXPECT_FALSE(frames.frame_size(size));
    EXPECT_FALSE(frames.bit_depth(depth));
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(depth, 16u);

    frames.goc(left, 8, 24);
    EXPECT_TRUE(frames.frame_size(size));
    EXPECT_TRUE(frames.bit_depth(depth));
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(depth, 24u);
}

TEST(Frames, SizeAndDepthAreThoseThatAllAgreeOn) {
    size_and_depth_are_agreed_on<std::uint32_t>();
    size_and_depth_are_agreed_on<std::uint64_t>();
}

}  // namespace
}  // namespace vela::api
