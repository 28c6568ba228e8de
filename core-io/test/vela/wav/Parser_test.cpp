#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/wav/FileParser.hpp>

namespace vela::wav {
namespace {

using namespace testing_support;
using Block = details::BlockInfo<int>;
using Samples = std::vector<int>;

/// Frames 0, 1, 2, ... of 24 bits; channel c adds 100 c.
std::string ramp(int frames, int channels = 1) {
    std::string data;
    for (int i = 0; i < frames; ++i)
        for (int c = 0; c < channels; ++c)
            data += u24(i + 100 * c);
    return data;
}

/// All blocks of the file; nothing if it is refused.
std::optional<std::vector<Block>> blocks_of(FileParser<int>& parser) {
    if (!parser.parse()) return std::nullopt;
    std::vector<Block> blocks;
    for (auto at = parser.blocks.begin(); !(at == parser.blocks.end()); ++at) {
        if (!at.parse_block_()) return std::nullopt;
        blocks.push_back(*at.cache);
    }
    return blocks;
}

TEST(WavParser, TheLastBlockMayBeShort) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(10)));
    FileParser<int> parser(file.name());
    parser.block_size = 4;
    const auto blocks = blocks_of(parser);
    ASSERT_TRUE(blocks);
    ASSERT_EQ(blocks->size(), 3u);
    EXPECT_EQ(parser.nr_frames, 10u);
    EXPECT_EQ(parser.blocks.size(), 3u);
    const Samples expected[] = {{0, 1, 2, 3}, {4, 5, 6, 7}, {8, 9}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ((*blocks)[i].start, 4 * i);
        EXPECT_EQ((*blocks)[i].stop, 4 * i + expected[i].size());
        ASSERT_EQ((*blocks)[i].channels.size(), 1u);
        EXPECT_EQ((*blocks)[i].channels[0], expected[i]);
    }
}

TEST(WavParser, AnOffsetMovesTheTimeLineToo) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(10)));
    FileParser<int> parser(file.name());
    parser.block_size = 4;
    parser.offset = 2;
    const auto blocks = blocks_of(parser);
    ASSERT_TRUE(blocks);
    ASSERT_EQ(blocks->size(), 2u);
    EXPECT_EQ(parser.nr_frames, 8u);
    EXPECT_EQ((*blocks)[0].start, 2u);
    EXPECT_EQ((*blocks)[0].channels[0], (Samples{2, 3, 4, 5}));
    EXPECT_EQ((*blocks)[1].start, 6u);
}

TEST(WavParser, AnOffsetReachesToTheEndAndNoFurther) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(10)));
    FileParser<int> parser(file.name());
    parser.block_size = 4;
    parser.offset = 10;
    EXPECT_TRUE(parser.parse());
    EXPECT_EQ(parser.nr_frames, 0u);
    for (const std::uint64_t offset : {std::uint64_t{11}, UINT64_MAX / 3 + 1, UINT64_MAX}) {
        parser.offset = offset;
        EXPECT_FALSE(parser.parse());
        EXPECT_FALSE(parser.blocks.valid());
    }
}

TEST(WavParser, NumberOfBlocks) {
    const struct {
        int frames;
        std::uint64_t block_size, overlap, blocks;
    } cases[] = {
        {0, 4, 0, 1},  {1, 4, 0, 1}, {3, 4, 0, 1},   {4, 4, 0, 1},
        {5, 4, 0, 2},  {8, 4, 0, 2}, {10, 1, 0, 10}, {10, UINT64_MAX, 0, 1},
        {10, 4, 2, 4}, {4, 4, 3, 1}, {5, 4, 3, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.frames << " " << c.block_size << " " << c.overlap);
        const TempFile file(wav_file(pcm_format(1, 24), ramp(c.frames)));
        FileParser<int> parser(file.name());
        parser.block_size = c.block_size;
        parser.overlap = c.overlap;
        const auto blocks = blocks_of(parser);
        ASSERT_TRUE(blocks);
        EXPECT_EQ(blocks->size(), c.blocks);
        EXPECT_EQ(blocks->front().channels[0].size(),
                  std::min<std::uint64_t>(c.block_size, static_cast<std::uint64_t>(c.frames)));
    }
}

TEST(WavParser, OverlappingBlocksShareSamples) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(6)));
    FileParser<int> parser(file.name());
    parser.block_size = 4;
    parser.overlap = 2;
    const auto blocks = blocks_of(parser);
    ASSERT_TRUE(blocks);
    ASSERT_EQ(blocks->size(), 2u);
    EXPECT_EQ((*blocks)[1].channels[0], (Samples{2, 3, 4, 5}));
    EXPECT_EQ((*blocks)[1].start, 4u);
    parser.overlap = 4;
    EXPECT_FALSE(parser.parse());
}

TEST(WavParser, WithoutABlockSizeNothingIsRead) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(6)));
    FileParser<int> parser(file.name());
    EXPECT_FALSE(parser.parse());
}

TEST(WavParser, ChunksMayComeInAnyOrderAmongOthers) {
    const std::string fmt = chunk("fmt ", fmt_content(pcm_format(1, 24)));
    const std::string data = chunk("data", ramp(3)), list = chunk("LIST", "INFOx");
    for (const auto& chunks : {list + fmt + data, data + fmt, fmt + list + data + list,
                               chunk("data", ramp(2)) + fmt + data}) {
        const TempFile file(riff_file(chunks));
        FileParser<int> parser(file.name());
        parser.block_size = 3;
        const auto blocks = blocks_of(parser);
        ASSERT_TRUE(blocks);
        EXPECT_EQ(blocks->front().channels[0], (Samples{0, 1, 2}));
    }
}

TEST(WavParser, WithoutDataThereIsOneEmptyBlock) {
    const TempFile file(riff_file(chunk("fmt ", fmt_content(pcm_format(1, 24)))));
    FileParser<int> parser(file.name());
    parser.block_size = 3;
    EXPECT_TRUE(parser.parse());
    EXPECT_EQ(parser.blocks.size(), 1u);
    EXPECT_EQ(parser.nr_frames, 0u);
}

TEST(WavParser, RefusedFiles) {
    const std::string fmt = chunk("fmt ", fmt_content(pcm_format(1, 24)));
    for (const auto& bytes :
         {riff_file(fmt + chunk("data", ramp(3)), "AVI "), riff_file(chunk("data", ramp(3))),
          riff_file(chunk("fmt ", "short") + chunk("data", ramp(3))), std::string("text")}) {
        const TempFile file(bytes);
        FileParser<int> parser(file.name());
        parser.block_size = 3;
        EXPECT_FALSE(parser.parse());
        EXPECT_FALSE(parser.format);
    }
    for (const auto& name : {file::Name(testing::TempDir()), TempFile().name()}) {
        FileParser<int> parser(name);
        parser.block_size = 3;
        EXPECT_FALSE(parser.parse());
    }
}

/// What becomes of a file: refused at once, at the first block, or read.
enum class Fate { refused, no_block, read };

Fate fate_of(const Format& format, const std::string& extra_fmt = "") {
    const TempFile file(riff_file(chunk("fmt ", fmt_content(format) + extra_fmt) +
                                  chunk("data", std::string(48, '\1'))));
    FileParser<int> parser(file.name());
    parser.block_size = 4;
    if (!parser.parse()) return Fate::refused;
    auto at = parser.blocks.begin();
    if (!at.parse_block_()) return Fate::no_block;
    EXPECT_FALSE(at.parse_block_()) << "the block is there already";
    return Fate::read;
}

TEST(WavParser, AcceptedFormats) {
    for (const std::uint16_t bits :
         std::initializer_list<std::uint16_t>{0, 1, 8, 12, 16, 20, 24, 32, 48, 64, 65535}) {
        SCOPED_TRACE(bits);
        const bool readable = bits == 16 || bits == 24 || bits == 32;
        Format plain = pcm_format(1, 24), extensible = extensible_format(1, 24);
        plain.block_align = extensible.block_align = 8;
        plain.bits_per_sample = extensible.bits_per_sample = bits;
        extensible.valid_bits_per_sample = bits;
        EXPECT_EQ(fate_of(plain), readable ? Fate::read : Fate::no_block);
        EXPECT_EQ(fate_of(extensible), readable ? Fate::read : Fate::no_block);
        --extensible.valid_bits_per_sample;
        EXPECT_EQ(fate_of(extensible), Fate::refused);
    }
}

TEST(WavParser, RefusedFormats) {
    for (const std::uint16_t tag :
         std::initializer_list<std::uint16_t>{0, 2, 3, 6, 7, 0x55, 65533, 65535}) {
        SCOPED_TRACE(tag);
        Format format = pcm_format(1, 24);
        format.format_tag = tag;
        EXPECT_EQ(fate_of(format), Fate::refused);
    }
    Format floating = extensible_format(1, 32);
    floating.subformat.data1 = 3;
    EXPECT_EQ(fate_of(floating), Fate::refused);
    EXPECT_EQ(fate_of(extensible_format(1, 24)), Fate::read);
    EXPECT_EQ(fate_of(extensible_format(1, 24), "xx"), Fate::refused);
}

TEST(WavParser, AFrameMayBeLongerThanItsSamplesButNotShorter) {
    Format format = pcm_format(1, 24);
    format.block_align = 4;
    const TempFile padded(wav_file(format, u24(7) + "?" + u24(-8) + "?"));
    FileParser<int> parser(padded.name());
    parser.block_size = 4;
    const auto blocks = blocks_of(parser);
    ASSERT_TRUE(blocks);
    EXPECT_EQ(blocks->front().channels[0], (Samples{7, -8}));

    format.block_align = 2;
    EXPECT_EQ(fate_of(format), Fate::no_block);
    format.block_align = 0;
    EXPECT_EQ(fate_of(format), Fate::refused);
}

TEST(WavParser, AHeaderThatLiesCostsNothing) {
    Format format = pcm_format(1, 24);
    format.channels = 65535;
    EXPECT_EQ(fate_of(format), Fate::no_block);
    format.block_align = 65535;
    EXPECT_EQ(fate_of(format), Fate::read) << "no whole frame: a block without samples";
    format = pcm_format(1, 24);
    format.channels = 0;
    EXPECT_EQ(fate_of(format), Fate::read) << "a block without channels";
}

TEST(WavParser, SamplesKeepTheirWidth) {
    const struct {
        std::uint16_t bits;
        std::string data;
        Samples samples;
    } cases[] = {
        {16, u16(0x7FFF) + u16(0x8000), {32767, -32768}},
        {24, u24(8388607) + u24(-8388608), {8388607, -8388608}},
        {32, u32(0x7FFFFFFF) + u32(0x80000000), {INT32_MAX, INT32_MIN}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bits);
        const TempFile file(wav_file(pcm_format(1, c.bits), c.data));
        FileParser<int> parser(file.name());
        parser.block_size = 2;
        const auto blocks = blocks_of(parser);
        ASSERT_TRUE(blocks);
        EXPECT_EQ(blocks->front().channels[0], c.samples);
    }
}

TEST(WavParser, TheBlockSizeDoesNotChangeTheSamples) {
    // More than one read of 64 KiB, and blocks that end in the middle of one.
    constexpr int frames = 30000;
    const TempFile file(wav_file(pcm_format(2, 24), ramp(frames, 2)));
    for (const std::uint64_t block_size : {977, 10000, 10922, 30000, 40000}) {
        SCOPED_TRACE(block_size);
        FileParser<int> parser(file.name());
        parser.block_size = block_size;
        const auto blocks = blocks_of(parser);
        ASSERT_TRUE(blocks);
        std::size_t wrong = 0;
        int at = 0;
        for (const auto& block : *blocks)
            for (std::size_t i = 0; i < block.channels[0].size(); ++i, ++at)
                wrong += block.channels[0][i] != at || block.channels[1][i] != at + 100;
        EXPECT_EQ(wrong, 0u);
        EXPECT_EQ(at, frames);
    }
}

TEST(WavParser, IteratorsOutliveTheirParser) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(10)));
    auto parser = std::make_unique<FileParser<int>>(file.name());
    parser->block_size = 4;
    ASSERT_TRUE(parser->parse());
    auto at = parser->blocks.begin();
    parser.reset();
    ++at;
    ASSERT_TRUE(at.parse_block_());
    EXPECT_EQ(at.cache->channels[0], (Samples{4, 5, 6, 7}));
    ++at;
    EXPECT_FALSE(at.cache.has_value());
    ++at;
    EXPECT_TRUE(at.parse_block_()) << "behind the end lies a block without samples";
    EXPECT_TRUE(at.cache->channels[0].empty());
}

TEST(WavParser, CutShortAnywhereItIsRefused) {
    for (const auto& format : {pcm_format(1, 24), extensible_format(1, 24)}) {
        // Three samples are nine bytes, so that the pad byte can be missing, too.
        const std::string whole = wav_file(format, ramp(3));
        for (std::size_t size = 0; size < whole.size(); ++size) {
            SCOPED_TRACE(size);
            const TempFile file(whole.substr(0, size));
            FileParser<int> parser(file.name());
            parser.block_size = 2;
            // Cut behind "fmt " it is a file without data, and behind the type one without format.
            const std::size_t data_chunk = 12 + 8 + fmt_content(format).size();
            EXPECT_EQ(parser.parse(), size == data_chunk);
        }
    }
}

TEST(WavParser, NoDamagedHeaderBringsItDown) {
    std::mt19937 random(33);
    const std::string whole = wav_file(extensible_format(2, 24), ramp(20, 2));
    const TempFile file;
    FileParser<int> parser(file.name());
    parser.block_size = 5;
    std::size_t read = 0;
    for (int round = 0; round < 500; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 3; ++i)
            damaged[random() % 68] = static_cast<char>(random() % 3 == 0 ? 255 : random() % 4);
        file.write(damaged);
        const auto blocks = blocks_of(parser);
        if (!blocks) continue;
        ++read;
        for (const auto& block : *blocks)
            EXPECT_LE(block.stop - block.start, 5u);
    }
    EXPECT_GT(read, 0u) << "some damage is harmless";
    EXPECT_LT(read, 500u);
}

TEST(WavParser, AFileThatShrinksWhileItIsReadFailsAtTheBlock) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(50000)));
    FileParser<int> parser(file.name());
    parser.block_size = 40000;
    ASSERT_TRUE(parser.parse());
    file.write(wav_file(pcm_format(1, 24), ramp(1000)));
    auto at = parser.blocks.begin();
    EXPECT_FALSE(at.parse_block_());
    EXPECT_FALSE(at.cache.has_value());
}

TEST(WavParser, AParserMayBeUsedAgain) {
    const TempFile file(wav_file(pcm_format(1, 24), ramp(10)));
    Parser<int, file::Range> parser;
    parser.block_size = 4;
    ASSERT_TRUE(parser.parse(file.name()));
    EXPECT_FALSE(parser.parse(TempFile().name()));
    EXPECT_FALSE(parser.format);
    EXPECT_EQ(parser.blocks.size(), 0u);
    EXPECT_TRUE(parser.parse(file.name()));
    EXPECT_EQ(parser.blocks.size(), 3u);
}

}  // namespace
}  // namespace vela::wav
