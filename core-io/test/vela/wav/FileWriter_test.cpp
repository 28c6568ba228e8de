#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/wav/FileParser.hpp>
#include <vela/wav/FileWriter.hpp>

namespace vela::wav {
namespace {

using namespace testing_support;
using Samples = std::vector<int>;

FileWriter::Samples range_of(const Samples& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

/// The file that `write` leaves behind.
template <typename Write>
std::string written(const Format& format, Write write) {
    const TempFile on_disk;
    {
        FileWriter writer(on_disk.name(), format);
        write(writer);
    }
    return on_disk.bytes();
}

TEST(FileWriter, WithoutSamplesItIsAHeader) {
    const auto bytes = written(pcm_format(1, 24), [](FileWriter&) {});
    EXPECT_EQ(bytes.size(), 44u);
    EXPECT_EQ(bytes, "RIFF" + u32(36) + "WAVE" + "fmt " + u32(16) + u16(1) + u16(1) + u32(48000) +
                         u32(144000) + u16(3) + u16(24) + "data" + u32(0));
}

TEST(FileWriter, AnOddNumberOfBytesIsPadded) {
    const auto bytes = written(pcm_format(1, 24), [](FileWriter& writer) {
        EXPECT_TRUE(writer.add_frame(range_of({1, -8388608, 8388607})));
    });
    EXPECT_EQ(bytes.size(), 54u);
    EXPECT_EQ(bytes.substr(4, 4), u32(46));
    EXPECT_EQ(bytes.substr(40), u32(9) + u24(1) + u24(-8388608) + u24(8388607) + '\0');
}

TEST(FileWriter, BlocksAreInterleavedInTheOrderOfTheRanges) {
    const auto bytes = written(pcm_format(3, 24), [](FileWriter& writer) {
        const Samples a{1, 2}, b{-3, 4}, c{5, 6};
        EXPECT_TRUE(writer.add_block({range_of(a), range_of(b), range_of(c)}));
        EXPECT_TRUE(writer.add_block({range_of(c), range_of(b), range_of(a)}));
    });
    std::string data;
    for (const int value : {1, -3, 5, 2, 4, 6, 5, -3, 1, 6, 4, 2})
        data += u24(value);
    EXPECT_EQ(bytes, wav_file(pcm_format(3, 24), data));
}

TEST(FileWriter, LengthsArePatchedFarBehindTheEnd) {
    const Samples samples(50000, -12345);
    const TempFile on_disk;
    {
        FileWriter writer(on_disk.name(), pcm_format(1, 24));
        for (int i = 0; i < 5; ++i)
            EXPECT_TRUE(writer.add_frame(range_of(samples)));
    }
    std::string data;
    for (int i = 0; i < 5; ++i)
        for (const int sample : samples)
            data += u24(sample);
    EXPECT_TRUE(on_disk.bytes() == wav_file(pcm_format(1, 24), data)) << "differs";
}

TEST(FileWriter, EveryWidthHasItsOwnBytes) {
    const Samples samples{0, -1, 100};
    const struct {
        std::uint16_t bits;
        std::string data;
    } cases[] = {
        {8, bytes_of(128, 127, 228)},
        {16, u16(0) + u16(0xFFFF) + u16(100)},
        {24, u24(0) + u24(-1) + u24(100)},
        {32, u32(0) + u32(0xFFFFFFFF) + u32(100)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bits);
        EXPECT_EQ(written(pcm_format(1, c.bits),
                          [&](FileWriter& w) { EXPECT_TRUE(w.add_frame(range_of(samples))); }),
                  wav_file(pcm_format(1, c.bits), c.data));
    }
    for (const std::uint16_t bits : std::initializer_list<std::uint16_t>{0, 12, 20, 64}) {
        SCOPED_TRACE(bits);
        const auto bytes = written(pcm_format(1, bits), [&](FileWriter& writer) {
            EXPECT_FALSE(writer.add_frame(range_of(samples)));
            EXPECT_FALSE(writer.add_block({range_of(samples)}));
            EXPECT_FALSE(writer.add_frame({}));
        });
        EXPECT_EQ(bytes.size(), 44u);
    }
}

TEST(FileWriter, OneAndFourBytesTakeAnyValue) {
    const Samples samples{INT32_MIN, INT32_MAX, 128, -129};
    const auto write = [&](FileWriter& w) { EXPECT_TRUE(w.add_frame(range_of(samples))); };
    EXPECT_EQ(written(pcm_format(1, 8), write).substr(44), bytes_of(128, 127, 0, 255));
    EXPECT_EQ(written(pcm_format(1, 32), write).substr(44),
              u32(0x80000000) + u32(0x7FFFFFFF) + u32(128) + u32(0xFFFFFF7F));
}

struct ClippingCase {
    std::uint16_t bits;
    int value;
    const char* message;
};

TEST(FileWriter, ASampleThatDoesNotFitIsToldAndEndsTheFrame) {
    const ClippingCase cases[] = {
        {24, 8388608,
         "Clipping detected: {sample: 8388608}{bnb::Traits<Format>::MinNeg: "
         "-8388608}{bnb::Traits<Format>::MaxPos: 8388607}\n"},
        {24, -8388609,
         "Clipping detected: {sample: -8388609}{bnb::Traits<Format>::MinNeg: "
         "-8388608}{bnb::Traits<Format>::MaxPos: 8388607}\n"},
        {16, 32768,
         "Clipping detected: {sample: 32768}{bnb::Traits<Format>::MinNeg: "
         "-32768}{bnb::Traits<Format>::MaxPos: 32767}\n"},
        {16, -32769,
         "Clipping detected: {sample: -32769}{bnb::Traits<Format>::MinNeg: "
         "-32768}{bnb::Traits<Format>::MaxPos: 32767}\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        const auto bytes = written(pcm_format(1, c.bits), [&](FileWriter& writer) {
            testing::internal::CaptureStderr();
            EXPECT_FALSE(writer.add_frame(range_of({7, c.value, 9, c.value})));
            EXPECT_EQ(testing::internal::GetCapturedStderr(), c.message);
            EXPECT_TRUE(writer.add_frame(range_of({8}))) << "the next frame is written again";
        });
        EXPECT_EQ(bytes, wav_file(pcm_format(1, c.bits),
                                  c.bits == 24 ? u24(7) + u24(8) : u16(7) + u16(8)));
    }
}

TEST(FileWriter, ABlockThatClipsIsWrittenUpToTheSample) {
    const auto bytes = written(pcm_format(2, 24), [](FileWriter& writer) {
        const Samples a{1, 2, -8388609}, b{4, 8388608, 6};
        testing::internal::CaptureStderr();
        EXPECT_FALSE(writer.add_block({range_of(a), range_of(b)}));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("{sample: 8388608}"),
                  std::string::npos);
    });
    EXPECT_EQ(bytes, wav_file(pcm_format(2, 24), u24(1) + u24(4) + u24(2)));
}

TEST(FileWriter, RangesMustFitTheFormat) {
    const Samples two{1, 2}, three{1, 2, 3};
    const auto stereo = written(pcm_format(2, 24), [&](FileWriter& writer) {
        EXPECT_FALSE(writer.add_frame(range_of(two)));
        EXPECT_FALSE(writer.add_block({}));
        EXPECT_FALSE(writer.add_block({range_of(two)}));
        EXPECT_FALSE(writer.add_block({range_of(two), range_of(two), range_of(two)}));
        EXPECT_FALSE(writer.add_block({range_of(two), range_of(three)}));
        EXPECT_FALSE(writer.add_block({range_of(two), {}}));
        EXPECT_TRUE(writer.add_block({{}, {}})) << "two ranges without samples are of one length";
    });
    EXPECT_EQ(stereo.size(), 44u);

    const auto mono = written(pcm_format(1, 24), [&](FileWriter& writer) {
        EXPECT_TRUE(writer.add_block({range_of(two)}));
        EXPECT_TRUE(writer.add_frame({}));
    });
    EXPECT_EQ(mono.size(), 44u + 6u);

    const auto none = written(pcm_format(0, 24), [&](FileWriter& writer) {
        EXPECT_FALSE(writer.add_block({}));
        EXPECT_FALSE(writer.add_frame(range_of(two)));
    });
    EXPECT_EQ(none.size(), 44u);
}

TEST(FileWriter, OnceCommittedTheFileStaysAsItIs) {
    const auto bytes = written(pcm_format(1, 24), [](FileWriter& writer) {
        EXPECT_TRUE(writer.add_frame(range_of({1, 2, 3})));
        EXPECT_TRUE(writer.commit());
        EXPECT_FALSE(writer.commit());
        EXPECT_FALSE(writer.add_frame(range_of({4})));
        EXPECT_FALSE(writer.add_block({range_of({4})}));
        EXPECT_FALSE(writer.commit());
    });
    EXPECT_EQ(bytes, wav_file(pcm_format(1, 24), u24(1) + u24(2) + u24(3)));
}

TEST(FileWriter, AFileThatCannotBeCreatedIsWrittenToInVain) {
    FileWriter writer(file::Name(testing::TempDir()), pcm_format(1, 24));
    EXPECT_TRUE(writer.add_frame(range_of({1, 2})));
    EXPECT_TRUE(writer.commit());
}

TEST(FileWriter, WhatIsWrittenReadsBack) {
    std::mt19937 random(7);
    for (const std::uint16_t bits : std::initializer_list<std::uint16_t>{16, 24, 32}) {
        for (const std::uint16_t channels : std::initializer_list<std::uint16_t>{1, 2, 7}) {
            SCOPED_TRACE(testing::Message() << bits << " bits, " << channels << " channels");
            std::vector<Samples> audio(channels, Samples(1001));
            for (auto& channel : audio)
                for (auto& sample : channel)
                    sample = static_cast<int>(random()) >> (32 - bits);
            std::vector<FileWriter::Samples> ranges;
            for (const auto& channel : audio)
                ranges.push_back(range_of(channel));

            const TempFile file;
            {
                FileWriter writer(file.name(), extensible_format(channels, bits));
                ASSERT_TRUE(writer.add_block(ranges));
            }
            FileParser<int> parser(file.name());
            parser.block_size = 1001;
            ASSERT_TRUE(parser.parse());
            EXPECT_EQ(*parser.format, extensible_format(channels, bits));
            auto at = parser.blocks.begin();
            ASSERT_TRUE(at.parse_block_());
            EXPECT_EQ(at.cache->channels, audio);
        }
    }
}

}  // namespace
}  // namespace vela::wav
