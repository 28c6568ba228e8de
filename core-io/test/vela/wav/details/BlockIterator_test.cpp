#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <thread>
#include <vela/wav/details/BlockIterator.hpp>

namespace vela::wav::details {
namespace {

using namespace testing_support;
using Iterator = BlockIterator<int, file::Range>;

Iterator iterator_on(const file::Name& name, const Format& format, std::uint64_t block_size) {
    Iterator at;
    at.format = std::make_shared<Format>(format);
    at.data = file::Range(name);
    at.block_size = block_size;
    return at;
}

TEST(BlockIterator, ReadsItsBlockOnce) {
    const TempFile file(u24(1) + u24(2) + u24(3));
    auto at = iterator_on(file.name(), pcm_format(1, 24), 2);
    EXPECT_FALSE(at.cache.has_value());
    ASSERT_TRUE(at.parse_block_());
    EXPECT_FALSE(at.parse_block_());
    EXPECT_EQ(at.cache->channels[0], (std::vector<int>{1, 2}));
    ++at;
    EXPECT_FALSE(at.cache.has_value());
    ASSERT_TRUE(at.parse_block_());
    EXPECT_EQ(at.cache->channels[0], (std::vector<int>{3}));
    EXPECT_EQ(at.cache->start, 2u);
    EXPECT_EQ(at.cache->stop, 3u);
}

TEST(BlockIterator, HalfAFrameAtTheEndIsNoSample) {
    const TempFile file(u24(1) + "ab");
    auto at = iterator_on(file.name(), pcm_format(1, 24), 2);
    ASSERT_TRUE(at.parse_block_());
    EXPECT_EQ(at.cache->channels[0], (std::vector<int>{1}));
    ++at;
    ASSERT_TRUE(at.parse_block_());
    EXPECT_TRUE(at.cache->channels[0].empty());
}

TEST(BlockIterator, AMonoBlockGoesToWhereItShallBe) {
    const TempFile file(u24(1) + u24(-2) + u24(3));
    auto at = iterator_on(file.name(), pcm_format(1, 24), 2);
    ASSERT_TRUE(at.is_mono());
    for (int again = 0; again < 2; ++again) {
        std::array<int, 3> samples{9, 9, 9};
        ASSERT_TRUE(at.read_mono(samples));
        EXPECT_EQ(samples, (std::array{1, -2, 0})) << "filled up with zeros";
    }
    EXPECT_FALSE(at.cache.has_value());
    ++at;
    std::array<int, 2> samples{9, 9};
    ASSERT_TRUE(at.read_mono(samples));
    EXPECT_EQ(samples, (std::array{3, 0}));
    ++at;
    ASSERT_TRUE(at.read_mono(samples));
    EXPECT_EQ(samples, (std::array{0, 0}));
    EXPECT_TRUE(at.read_mono({}));
}

TEST(BlockIterator, WhatIsNoMonoBlockGoesNowhere) {
    const TempFile file(u24(1) + u24(2));
    auto narrow = pcm_format(1, 24);
    narrow.block_align = 2;
    for (const auto& format : {pcm_format(2, 24), pcm_format(1, 8), narrow, Format()}) {
        auto at = iterator_on(file.name(), format, 1);
        std::array<int, 1> samples{9};
        EXPECT_FALSE(at.is_mono());
        EXPECT_FALSE(at.read_mono(samples));
        EXPECT_EQ(samples, std::array{9});
    }
}

TEST(BlockIterator, AFileThatShrinksUnderTheReaderFails) {
    const TempFile file(std::string(300000, 'x'));
    auto at = iterator_on(file.name(), pcm_format(1, 24), 100000);
    file.write("short");
    std::vector<int> samples(100000);
    EXPECT_FALSE(at.read_mono(samples));
    EXPECT_FALSE(at.parse_block_());
    EXPECT_FALSE(at.cache.has_value());
}

TEST(BlockIterator, ComparesByIndexAlone) {
    const TempFile file("abcdef");
    auto first = iterator_on(file.name(), pcm_format(1, 24), 1), second = first;
    Iterator other;
    EXPECT_EQ(first, other);
    ++second;
    EXPECT_FALSE(first == second);
    EXPECT_EQ(second - first, 1);
}

TEST(BlockIterator, FormatsWithoutFramesAreSurvived) {
    const TempFile file("abcdef");
    Format format = pcm_format(1, 24);
    format.block_align = 0;
    auto at = iterator_on(file.name(), format, 1);
    EXPECT_FALSE(at.parse_block_());
    ++at;
    EXPECT_EQ(at.data.size(), 6u);

    Iterator nothing;
    EXPECT_FALSE(nothing.parse_block_());
    ++nothing;
    EXPECT_EQ(nothing.index, 1u);
}

TEST(BlockIterator, AHugeBlockSizeIsTheWholeFile) {
    const TempFile file(u24(1) + u24(2) + u24(3));
    auto at = iterator_on(file.name(), pcm_format(1, 24), UINT64_MAX / 3 + 2);
    ASSERT_TRUE(at.parse_block_());
    EXPECT_EQ(at.cache->channels[0].size(), 3u);
    ++at;
    EXPECT_TRUE(at.data.empty());
}

TEST(BlockIterator, ThreadsMayShareAFile) {
    std::string bytes;
    for (int i = 0; i < 4000; ++i)
        bytes += u24(i);
    const TempFile file(bytes);
    const auto origin = iterator_on(file.name(), pcm_format(1, 24), 10);
    std::array<int, 3> wrong{};
    std::vector<std::thread> threads;
    for (auto& count : wrong)
        threads.emplace_back([&origin, &count] {
            Iterator at = origin;
            for (int block = 0; block < 400; ++block, ++at)
                count += !at.parse_block_() || at.cache->channels[0][9] != 10 * block + 9;
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, (std::array<int, 3>{}));
}

}  // namespace
}  // namespace vela::wav::details
