#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <set>
#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vector>
#include <vela/AudioSource.hpp>

namespace vela {
namespace {

using testing_support::TempFile;
using Source = AudioSource<int, api::ChannelVariant>;
using Block = std::vector<int>;

constexpr std::uint64_t frame_size = 4;

const api::ChannelVariant left(api::channel::Left);
const api::ChannelVariant right(api::channel::Right);

struct Mono {
    std::uint32_t sample_rate = 48000;
    std::uint16_t bits = 24;
    std::uint16_t channels = 1;
};

std::string wav_of(const Block& samples, const Mono& how = {}) {
    auto format = testing_support::pcm_format(how.channels, how.bits);
    format.sample_rate = how.sample_rate;
    std::string data;
    for (const int x : samples)
        data += testing_support::u32(static_cast<std::uint32_t>(x)).substr(0, how.bits / 8);
    return testing_support::wav_file(format, data);
}

/// Files and a source that reads them: the first is Left, the second Right.
class AudioSourceTest : public testing::Test {
protected:
    void add(const Block& samples, const Mono& how = {}) {
        files_.push_back(std::make_unique<TempFile>(wav_of(samples, how)));
        EXPECT_TRUE(source.add(files_.size() == 1 ? left : right, files_.back()->name()));
    }

    bool prepare(std::int32_t limit = -1) {
        source.set_frame_size(frame_size);
        source.set_frame_limit(limit);
        return source.prepare();
    }

    /// All blocks of one channel to the end of the stream.
    std::vector<Block> drain(const api::ChannelVariant& key = left) {
        std::vector<Block> blocks;
        while (source.get(frames, span)) {
            EXPECT_EQ(span.start, static_cast<std::int64_t>(blocks.size() * frame_size));
            EXPECT_EQ(span.size(), static_cast<std::int64_t>(frame_size));
            EXPECT_EQ(frames.find(key)->key, key);
            EXPECT_EQ(frames.find(key)->bit_depth, source.bit_depth());
            blocks.push_back(samples(key));
            source.pop_front();
        }
        return blocks;
    }

    Block samples(const api::ChannelVariant& key) const {
        const auto* frame = frames.find(key);
        if (!frame) return {};
        return {frame->samples().begin(), frame->samples().end()};
    }

    /// Another one, without files.
    void start_anew() {
        std::destroy_at(&source);
        std::construct_at(&source);
        files_.clear();
    }

    Source source;
    api::Frames<int, api::ChannelVariant> frames;
    api::SampleSpan span;

private:
    std::vector<std::unique_ptr<TempFile>> files_;
};

TEST_F(AudioSourceTest, BlocksOfAllChannelsInStep) {
    add({1, 2, 3, 4, 5, 6, 7, 8});
    add({-1, -2, -3, -4, -5, -6, -7, -8388608});
    ASSERT_TRUE(prepare());
    EXPECT_EQ(source.sample_rate(), 48000u);
    EXPECT_EQ(source.bit_depth(), 24u);
    EXPECT_EQ(source.nr_frames(), 2);

    ASSERT_TRUE(source.get(frames, span));
    EXPECT_EQ(span, (api::SampleSpan{0, 4}));
    EXPECT_EQ(samples(left), (Block{1, 2, 3, 4}));
    EXPECT_EQ(samples(right), (Block{-1, -2, -3, -4}));
    EXPECT_EQ(frames.find(left)->bit_depth, 24u);

    source.pop_front();
    ASSERT_TRUE(source.get(frames, span));
    EXPECT_EQ(span, (api::SampleSpan{4, 8}));
    EXPECT_EQ(samples(left), (Block{5, 6, 7, 8}));
    EXPECT_EQ(samples(right), (Block{-5, -6, -7, -8388608}));

    source.pop_front();
    EXPECT_FALSE(source.get(frames, span));
    EXPECT_EQ(span, (api::SampleSpan{4, 8})) << "the end leaves the last span";
}

TEST_F(AudioSourceTest, TheShortestFileEndsTheStream) {
    for (const bool short_first : {true, false}) {
        start_anew();
        const TempFile brief(wav_of({1, 2, 3, 4, 5, 6, 7, 8}));
        const TempFile lengthy(wav_of(Block(40, 9)));
        ASSERT_TRUE(source.add(left, (short_first ? brief : lengthy).name()));
        ASSERT_TRUE(source.add(right, (short_first ? lengthy : brief).name()));
        ASSERT_TRUE(prepare());
        EXPECT_EQ(source.nr_frames(), 2);
        EXPECT_EQ(drain().size(), 2u);
    }
}

TEST_F(AudioSourceTest, LastBlockIsFilledUpWithZeros) {
    add({1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(prepare());
    EXPECT_EQ(source.nr_frames(), 2);
    EXPECT_EQ(drain(), (std::vector<Block>{{1, 2, 3, 4}, {5, 6, 0, 0}}));
}

TEST_F(AudioSourceTest, AFileWithoutSamplesIsOneBlockOfSilence) {
    add({});
    ASSERT_TRUE(prepare());
    EXPECT_EQ(source.nr_frames(), 1);
    EXPECT_EQ(drain(), (std::vector<Block>{{0, 0, 0, 0}}));
}

TEST_F(AudioSourceTest, LimitEndsTheStreamEarly) {
    add(Block(20, 5));
    ASSERT_TRUE(prepare(3));
    EXPECT_EQ(source.nr_frames(), 5) << "counts the file, not the limit";
    EXPECT_EQ(drain().size(), 3u);
}

TEST_F(AudioSourceTest, LimitOfNothing) {
    add(Block(20, 5));
    ASSERT_TRUE(prepare(0));
    EXPECT_FALSE(source.get(frames, span));
    EXPECT_TRUE(frames.empty());
}

TEST_F(AudioSourceTest, NegativeLimitsAreNone) {
    add(Block(20, 5));
    ASSERT_TRUE(prepare(-7));
    EXPECT_EQ(drain().size(), 5u);
}

TEST_F(AudioSourceTest, LimitBeyondTheFile) {
    add(Block(8, 5));
    ASSERT_TRUE(prepare(100));
    EXPECT_EQ(drain().size(), 2u);
}

TEST_F(AudioSourceTest, WithoutPopTheBlockStays) {
    add({1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_TRUE(prepare(1));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(source.get(frames, span));
        EXPECT_EQ(samples(left), (Block{1, 2, 3, 4}));
        EXPECT_EQ(span.start, 0);
    }
}

TEST_F(AudioSourceTest, PoppingBeyondTheEndStaysAtTheEnd) {
    add({1, 2, 3, 4});
    ASSERT_TRUE(prepare());
    for (int i = 0; i < 3; ++i) {
        source.pop_front();
        EXPECT_FALSE(source.get(frames, span));
    }
}

TEST_F(AudioSourceTest, FramesHeldElsewhereKeepTheirSamples) {
    add({1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(source.get(frames, span));
    const auto held = frames;
    source.pop_front();
    ASSERT_TRUE(source.get(frames, span));
    EXPECT_EQ(held.find(left)->samples().front(), 1);
    EXPECT_EQ(samples(left).front(), 5);
}

// Memory that was used before is nearer than what has not been used yet.
TEST_F(AudioSourceTest, BlocksAreReadWhereOthersWereThatNobodyHasAnyMore) {
    add(Block(400, 1));
    ASSERT_TRUE(prepare());
    std::set<const int*> seen;
    for (auto held = frames; source.get(frames, span); source.pop_front()) {
        EXPECT_NE(frames.find(left)->samples().data(),
                  held.empty() ? nullptr : held.find(left)->samples().data());
        held = frames;
        seen.insert(held.find(left)->samples().data());
    }
    EXPECT_EQ(seen.size(), 2u);
}

TEST_F(AudioSourceTest, OffsetSkipsTheFirstSamplesOfEveryFile) {
    add({1, 2, 3, 4, 5, 6, 7});
    source.set_offset(2);
    ASSERT_TRUE(prepare());
    EXPECT_EQ(drain(), (std::vector<Block>{{3, 4, 5, 6}, {7, 0, 0, 0}}));
}

TEST_F(AudioSourceTest, OtherWidthsPassAsTheyAre) {
    for (const std::uint16_t bits : std::initializer_list<std::uint16_t>{16, 24, 32}) {
        start_anew();
        const TempFile file(wav_of({1, -2, 3, -4}, {.bits = bits}));
        ASSERT_TRUE(source.add(left, file.name()));
        ASSERT_TRUE(prepare());
        EXPECT_EQ(source.bit_depth(), bits);
        ASSERT_TRUE(source.get(frames, span));
        EXPECT_EQ(samples(left), (Block{1, -2, 3, -4}));
        EXPECT_EQ(frames.find(left)->bit_depth, bits);
    }
}

TEST_F(AudioSourceTest, AWidthThatNobodyReadsEndsTheStreamAtOnce) {
    add({1, 2, 3, 4}, {.bits = 8});
    ASSERT_TRUE(prepare());
    EXPECT_FALSE(source.get(frames, span));
}

TEST_F(AudioSourceTest, AStereoFileIsLikeOneThatHasEnded) {
    add({1, 2, 3, 4});
    add({1, 2, 3, 4, 5, 6, 7, 8}, {.channels = 2});
    ASSERT_TRUE(prepare());
    EXPECT_FALSE(source.get(frames, span));
}

// A size that nothing can hold ends the process, unless a file before has ended the stream.
TEST_F(AudioSourceTest, MemoryIsWantedInTheOrderOfTheFiles) {
    for (const bool stereo_first : {false, true}) {
        start_anew();
        const TempFile mono(wav_of({1, 2, 3, 4}));
        const TempFile stereo(wav_of({1, 2, 3, 4}, {.channels = 2}));
        ASSERT_TRUE(source.add(left, (stereo_first ? stereo : mono).name()));
        ASSERT_TRUE(source.add(right, (stereo_first ? mono : stereo).name()));
        source.set_frame_size(std::uint64_t{1} << 61);
        ASSERT_TRUE(source.prepare());
        if (stereo_first)
            EXPECT_FALSE(source.get(frames, span));
        else
            EXPECT_THROW(static_cast<void>(source.get(frames, span)), std::bad_alloc);
    }
}

// Farther than the bytes that the reader had ahead.
TEST_F(AudioSourceTest, AFileThatShrinksEndsTheStreamWhereItCannotBeRead) {
    const TempFile file(wav_of(Block(100000, 7)));
    ASSERT_TRUE(source.add(left, file.name()));
    ASSERT_TRUE(prepare());
    file.write(wav_of(Block(100, 7)));
    const auto blocks = drain();
    EXPECT_LT(blocks.size(), 25000u);
    EXPECT_EQ(blocks, std::vector<Block>(blocks.size(), Block(frame_size, 7)));
    EXPECT_FALSE(source.get(frames, span));
}

TEST_F(AudioSourceTest, RatesMustAgree) {
    add({1}, {.sample_rate = 48000});
    add({1}, {.sample_rate = 44100});
    EXPECT_FALSE(prepare());
}

TEST_F(AudioSourceTest, RatesMustAgreeInTheOtherOrderToo) {
    add({1}, {.sample_rate = 44100});
    add({1}, {.sample_rate = 48000});
    EXPECT_FALSE(prepare());
}

TEST_F(AudioSourceTest, WidthsMustAgree) {
    add({1}, {.bits = 24});
    add({1}, {.bits = 16});
    EXPECT_FALSE(prepare());
}

TEST_F(AudioSourceTest, WidthsMustAgreeInTheOtherOrderToo) {
    add({1}, {.bits = 16});
    add({1}, {.bits = 24});
    EXPECT_FALSE(prepare());
}

TEST_F(AudioSourceTest, NoInputsAtAll) {
    ASSERT_TRUE(prepare());
    EXPECT_EQ(source.sample_rate(), 0u);
    EXPECT_EQ(source.bit_depth(), 0u);
    EXPECT_EQ(source.nr_frames(), -1);
    EXPECT_FALSE(source.get(frames, span));
    EXPECT_TRUE(frames.empty());
}

TEST_F(AudioSourceTest, AChannelHasOneFile) {
    EXPECT_TRUE(source.add(left, file::Name("a.wav")));
    EXPECT_TRUE(source.add(left, file::Name("a.wav")));
    EXPECT_FALSE(source.add(left, file::Name("b.wav")));
    EXPECT_TRUE(source.add(api::ChannelVariant(api::channel::Left, 1), file::Name("b.wav")));
    EXPECT_TRUE(source.add(right, file::Name("a.wav")));
}

TEST_F(AudioSourceTest, WhatIsNoWavFileIsRefused) {
    const TempFile text("RIFF but not much more");
    ASSERT_TRUE(source.add(left, text.name()));
    EXPECT_FALSE(prepare());

    start_anew();
    ASSERT_TRUE(source.add(left, TempFile().name()));
    EXPECT_FALSE(prepare());
}

TEST_F(AudioSourceTest, WithoutAFrameSizeFilesAreRefused) {
    add({1, 2, 3});
    EXPECT_FALSE(source.prepare());
}

}  // namespace
}  // namespace vela
