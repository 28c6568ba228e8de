#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vela/codec/mux/BitMap.hpp>
#include <vela/codec/mux/details/compute_crc.hpp>
#include <vela/codec/zvk/Text.hpp>
#include <vela/codec/zvk/details/error_centers.hpp>
#include <vela/codec/zvk/serialize.hpp>

namespace vela::codec::zvk {

using mux::test::record_bits;
using test::bits;

constexpr std::size_t list_at = 160;  // behind sync word, CRC and header

Range<int*> range_of(std::vector<int>& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

dmol::Instruction layout_9_1() {
    dmol::Instruction instruction;
    instruction.set_opcode(dmol::Opcode::InputLayout);
    instruction.arg2 = 30;
    return instruction;
}

/// A record with its sections, and a silent block to write it into.
struct Block {
    ZVK record;
    std::vector<std::int32_t> seeds;
    ZVK::Centers1 centers_1d;
    ZVK::Centers2 centers_2d;
    std::vector<std::uint64_t> ixs;
    std::vector<int> samples;

    explicit Block(std::size_t nr_samples) : samples(nr_samples) {
        EXPECT_TRUE(record.set_frame_size(nr_samples));
        record.mix_seeds = &seeds;
    }
    bool write(unsigned nr_lines) { return serialize<24>(range_of(samples), record, nr_lines); }
    /// The bits behind the header, once written.
    std::string body(unsigned nr_lines) {
        EXPECT_TRUE(write(nr_lines));
        return record_bits(samples, nr_lines).substr(list_at);
    }
    bool fails_untouched(unsigned nr_lines) {
        const std::vector<int> before = samples;
        return !write(nr_lines) && samples == before;
    }
};

/// `text`, and zeros up to `size`.
std::string padded(std::string text, std::size_t size) {
    text.resize(size, '0');
    return text;
}

TEST(Serialize, SmallRecordOfTwoChannels) {
    Block block(112);
    block.record.set_version(1, 10);
    block.record.encoded_flag = true;
    EXPECT_TRUE(block.record.set_mix_bw(21));
    block.record.channels[0] = api::channel::Left;
    block.record.channels[1] = api::channel::HeightLeft;
    block.record.rice_k = 1;
    block.record.center_bits = 4;
    block.seeds = {5, -2};
    block.record.add_dmol_instruction(layout_9_1());
    block.centers_1d = {{3}, {-7}, {0}};
    block.record.set_centers(&block.centers_1d);
    block.ixs = {0, 5, 1, 2};
    block.record.ixs = &block.ixs;
    EXPECT_TRUE(block.write(3));

    const std::string record = record_bits(block.samples, 3);
    const std::string header =
        "00000110"  // 7 x 16 samples
        "0010"      // an encoded block
        "1011"      // a mix of 10 + 11 bits
        "00000001"
        "00001010"  // version 1.10
        "0"
        "0"
        "00"
        "0001"      // no dither, plain indices, k = 1
        "00000000"  // class 0: 8 slots
        "00000001"  // an instruction list
        "00000100"  // 4 bits a center
        "00000000"
        "00001001"
        "11111111"
        "11111111"  // Left, HeightLeft
        "00000000000000000000000000000000";
    const std::string sections =
        "11111111111111111111111111111110"  // seed 1: -2
        "00000000000000000000000000000101"  // seed 0: 5
        "00000001"                          // tag
        "00011110"
        "00011110"  // InputLayout 30
        "00000000"  // End
        "0011"
        "1111"
        "0000"  // 3, -7, 0
        "1111"
        "1111"
        "1111"
        "1111"
        "1111"  // unused slots
        "00"
        "1101"
        "01"
        "100";  // 0, 5, 1, 2
    EXPECT_EQ(record.substr(0, 16), std::string(16, '1'));
    EXPECT_EQ(record.substr(32), padded(header + sections, record.size() - 32));

    unsigned long crc = 0;
    EXPECT_TRUE(mux::details::compute_crc(24, crc, range_of(block.samples)));
    EXPECT_EQ(record.substr(16, 16), bits(crc, 16));
}

TEST(Serialize, FiveSeedsStandInOrderAndTwoInReverse) {
    Block block(256);
    block.seeds = {1, 2};
    EXPECT_EQ(block.body(3).substr(0, 64), bits(2, 32) + bits(1, 32));
    Block of_three(256);
    of_three.seeds = {1, -2, 3, -4, 5};
    EXPECT_EQ(of_three.body(3).substr(0, 160), bits(1, 32) + bits(0xFFFFFFFE, 32) + bits(3, 32) +
                                                   bits(0xFFFFFFFC, 32) + bits(5, 32));
}

TEST(Serialize, CentersOfThreeChannelsGoElementByElement) {
    Block block(256);
    block.centers_2d = {{1, -2}, {-3, 0}};
    block.record.set_centers(&block.centers_2d);
    block.record.center_bits = 3;
    const std::string unused(6 * 3, '1');
    EXPECT_EQ(block.body(3), padded("001"
                                    "111" +
                                        unused +
                                        "110"
                                        "000" +
                                        unused,
                                    block.body(3).size()));
}

TEST(Serialize, CentersAreSignAndMagnitude) {
    struct Case {
        int value;
        std::uint8_t width;
        std::string slot;
    };
    const int smallest = std::numeric_limits<int>::min();
    const Case cases[] = {
        {0, 2, "00"},
        {1, 2, "01"},
        {-1, 2, "11"},
        {0, 5, "00000"},
        {-5, 4, "1101"},
        {9, 4, "0001"},
        {-6, 12, bits(1, 1) + bits(6, 11)},
        {smallest, 33, bits(1, 1) + bits(0x80000000, 32)},
        {-3, 100, bits(1, 1) + bits(0, 97) + bits(3, 2)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        Block block(1024);
        block.centers_1d = {{c.value}};
        block.record.set_centers(&block.centers_1d);
        block.record.center_bits = c.width;
        const std::string body = block.body(3);
        const std::string slots = c.slot + std::string(7u * c.width, '1');
        EXPECT_EQ(body, padded(slots, body.size()));
    }
}

TEST(Serialize, CentersWithoutAnyKeepTheirSlots) {
    Block block(256);
    block.record.set_centers(&block.centers_1d);
    block.record.center_bits = 1;
    const std::string body = block.body(3);
    EXPECT_EQ(body, padded(std::string(8, '1'), body.size()));
}

TEST(Serialize, IndicesAreGolombRiceWithTheRemainderReversed) {
    struct Case {
        std::uint64_t ix;
        std::uint8_t k;
        const char* code;
    };
    const Case cases[] = {{0, 1, "00"},         {1, 1, "01"},         {5, 1, "1101"},
                          {9, 2, "11010"},      {1, 3, "0100"},       {4, 3, "0001"},
                          {14, 3, "10011"},     {127, 7, "01111111"}, {64, 7, "00000001"},
                          {129, 7, "101000000"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.ix);
        Block block(256);
        block.ixs = {c.ix, 1};
        block.record.ixs = &block.ixs;
        block.record.rice_k = c.k;
        const std::string body = block.body(3);
        const std::string one = "01" + std::string(c.k - 1u, '0');
        EXPECT_EQ(body, padded(c.code + one, body.size()));
    }
}

TEST(Serialize, ARecordOfOneChannelIsHeaderAndInstructions) {
    Block block(256);
    block.record.add_dmol_instruction(layout_9_1());
    const std::string body = block.body(3);
    EXPECT_EQ(body, padded(bits(1, 8) + bits(30, 8) + bits(30, 8), body.size()));
    Block bare(256);
    bare.record.mix_seeds = nullptr;
    EXPECT_EQ(bare.body(3), std::string(body.size(), '0'));
}

/// Reads a record the way a decoder does.
class Reader {
public:
    explicit Reader(std::string record) : record_(std::move(record)) {}

    std::uint64_t number(unsigned width) {
        std::uint64_t value = 0;
        while (width-- > 0)
            value = value << 1 | bit_();
        return value;
    }
    int center(unsigned width) {
        const bool negative = bit_() != 0;
        const int magnitude = static_cast<int>(number(width - 1));
        return negative ? -magnitude : magnitude;
    }
    std::uint64_t ix(unsigned k) {
        std::uint64_t value = 0;
        while (bit_() != 0)
            ++value;
        value <<= k;
        for (unsigned i = 0; i < k; ++i)
            value |= bit_() << i;
        return value;
    }
    std::string rest() const { return record_.substr(at_); }

private:
    std::uint64_t bit_() { return record_.at(at_++) == '1'; }

    std::string record_;
    std::size_t at_ = 0;
};

template <std::size_t D>
std::vector<std::array<int, D>> random_centers(std::mt19937& engine, unsigned width) {
    std::vector<std::array<int, D>> centers(1 + engine() % 60);
    for (auto& center : centers)
        for (int& element : center)
            element = static_cast<int>(engine() % ((1u << width) - 1)) - (1 << (width - 1)) + 1;
    return centers;
}

template <std::size_t D>
void expect_centers(Reader& reader, const std::vector<std::array<int, D>>& centers,
                    const ZVK& record) {
    const auto slots = details::nr_error_centers_per_index(record.error_center_ix);
    for (std::size_t element = 0; element < D; ++element) {
        for (const auto& center : centers)
            ASSERT_EQ(reader.center(record.center_bits), center[element]);
        for (std::size_t slot = centers.size(); slot < slots; ++slot)
            ASSERT_EQ(reader.number(record.center_bits), (1u << record.center_bits) - 1);
    }
}

void fill_randomly(Block& block, std::mt19937& engine, bool three) {
    block.seeds.resize(three ? 5 : 2);
    for (std::int32_t& seed : block.seeds)
        seed = static_cast<std::int32_t>(engine());
    block.record.add_dmol_instruction(layout_9_1());
    const auto width = static_cast<unsigned>(3 + engine() % 12);
    block.record.center_bits = static_cast<std::uint8_t>(width);
    block.centers_1d = random_centers<1>(engine, width);
    block.centers_2d = random_centers<2>(engine, width);
    if (three)
        block.record.set_centers(&block.centers_2d);
    else
        block.record.set_centers(&block.centers_1d);
    block.record.rice_k = static_cast<std::uint8_t>(1 + engine() % 7);
    block.ixs.resize(block.samples.size());
    const std::size_t nr_centers = three ? block.centers_2d.size() : block.centers_1d.size();
    for (std::uint64_t& ix : block.ixs)
        ix = engine() % std::min<std::size_t>(nr_centers, std::size_t{2} << block.record.rice_k);
    block.record.ixs = &block.ixs;
}

void expect_record(const Block& block, unsigned nr_lines, bool three) {
    Reader reader(record_bits(block.samples, nr_lines));
    ASSERT_EQ(reader.number(16), 0xFFFFu);
    unsigned long crc = 0;
    const int* const first = block.samples.data();
    const Range<const int*> range(first, first + block.samples.size());
    ASSERT_TRUE(mux::details::compute_crc(24, crc, range));
    ASSERT_EQ(reader.number(16), crc);
    (void)reader.number(36);
    ASSERT_EQ(reader.number(4), block.record.rice_k);
    ASSERT_EQ(reader.number(8), block.record.error_center_ix);
    ASSERT_EQ(reader.number(8), 1u);
    ASSERT_EQ(reader.number(8), block.record.center_bits);
    (void)reader.number(64);
    std::vector<std::int32_t> seeds;
    for (std::size_t i = 0; i < block.seeds.size(); ++i)
        seeds.push_back(static_cast<std::int32_t>(reader.number(32)));
    if (!three) std::swap(seeds[0], seeds[1]);
    ASSERT_EQ(seeds, block.seeds);
    ASSERT_EQ(reader.number(32), 0x011E1E00u);
    if (three)
        expect_centers(reader, block.centers_2d, block.record);
    else
        expect_centers(reader, block.centers_1d, block.record);
    for (const std::uint64_t ix : block.ixs)
        ASSERT_EQ(reader.ix(block.record.rice_k), ix);
    ASSERT_EQ(reader.rest(), std::string(reader.rest().size(), '0'));
}

TEST(Serialize, RandomRecordsReadBackFromRandomAudio) {
    std::mt19937 engine(20);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const auto nr_lines = static_cast<unsigned>(12 + engine() % 5);
        const bool three = round % 2 != 0;
        Block block(16 * (64 + engine() % 34));
        fill_randomly(block, engine, three);
        for (int& sample : block.samples)
            sample = (static_cast<int>(engine() % (1u << 24)) - (1 << 23)) & -(1 << nr_lines);
        const std::vector<int> audio = block.samples;
        ASSERT_TRUE(block.write(nr_lines));
        expect_record(block, nr_lines, three);
        for (std::size_t i = 0; i < audio.size(); ++i)
            ASSERT_EQ(block.samples[i] & -(1 << nr_lines), audio[i]);
    }
}

TEST(Serialize, EveryCountOfLinesFromThreeToSixteen) {
    for (unsigned nr_lines = 0; nr_lines <= 40; ++nr_lines) {
        SCOPED_TRACE(nr_lines);
        Block block(256);
        const bool known = nr_lines >= 3 && nr_lines <= 16;
        EXPECT_EQ(block.write(nr_lines), known);
        if (known) {
            EXPECT_EQ(record_bits(block.samples, nr_lines).substr(0, 16), std::string(16, '1'));
        } else {
            EXPECT_EQ(block.samples, std::vector<int>(256));
        }
    }
}

TEST(Serialize, TheCountOfLinesMayBeFixed) {
    Block dispatched(256);
    EXPECT_TRUE(dispatched.write(5));
    Block fixed(256);
    EXPECT_TRUE((serialize<24, 5>(range_of(fixed.samples), fixed.record)));
    EXPECT_EQ(fixed.samples, dispatched.samples);
}

// Sync word and CRC take 32 of its 48 bits.
TEST(Serialize, SixteenSamplesOfThreeLinesCannotHoldTheHeader) {
    Block block(16);
    EXPECT_TRUE(block.fails_untouched(3));
    EXPECT_TRUE(block.fails_untouched(9));
    EXPECT_TRUE(block.write(10));
}

TEST(Serialize, BlocksBelowSixteenSamplesFail) {
    for (const std::size_t size : {0u, 1u, 15u}) {
        Block block(256);
        block.samples.resize(size);
        EXPECT_TRUE(block.fails_untouched(16)) << size;
    }
    EXPECT_FALSE(serialize<24>({}, ZVK(), 16));
}

TEST(Serialize, TheHeaderMustSayWhetherThereIsAList) {
    Block empty(256);
    empty.record.nr_instruction_lists = 1;
    EXPECT_TRUE(empty.fails_untouched(16));

    Block filled(256);
    filled.record.add_dmol_instruction(layout_9_1());
    for (const int count : {0, 2, 255}) {
        filled.record.nr_instruction_lists = static_cast<std::uint8_t>(count);
        EXPECT_TRUE(filled.fails_untouched(16)) << count;
    }
}

TEST(Serialize, BrokenInstructionsFail) {
    Block block(256);
    dmol::Instruction instruction;
    instruction.set_opcode(dmol::Opcode::RoomType);
    block.record.add_dmol_instruction(instruction);
    EXPECT_TRUE(block.fails_untouched(16));
}

TEST(Serialize, OtherCountsOfSeedsFail) {
    for (const std::size_t count : {1u, 3u, 4u, 6u}) {
        Block block(256);
        block.seeds.resize(count);
        EXPECT_TRUE(block.fails_untouched(16)) << count;
    }
}

TEST(Serialize, MoreCentersThanSlotsFail) {
    Block block(256);
    block.centers_1d.resize(9);
    block.record.set_centers(&block.centers_1d);
    block.record.center_bits = 3;
    block.record.error_center_ix = 0;
    EXPECT_TRUE(block.fails_untouched(16));

    Block beyond_the_classes(4096);
    beyond_the_classes.centers_1d.resize(3369);
    beyond_the_classes.record.set_centers(&beyond_the_classes.centers_1d);
    beyond_the_classes.record.center_bits = 2;
    EXPECT_TRUE(beyond_the_classes.fails_untouched(16));
}

TEST(Serialize, CentersNeedASignAndABit) {
    for (const int center_bits : {0, 1}) {
        Block block(256);
        block.centers_1d.resize(1);
        block.record.set_centers(&block.centers_1d);
        block.record.center_bits = static_cast<std::uint8_t>(center_bits);
        EXPECT_TRUE(block.fails_untouched(16));
    }
}

TEST(Serialize, OtherCodingsOfIndicesFail) {
    struct Case {
        const char* name;
        void (*change)(ZVK&);
        bool ok;
    };
    const Case cases[] = {
        {"k = 0", [](ZVK& r) { r.rice_k = 0; }, false},
        {"k = 1", [](ZVK& r) { r.rice_k = 1; }, true},
        {"k = 7", [](ZVK& r) { r.rice_k = 7; }, true},
        {"k = 8", [](ZVK& r) { r.rice_k = 8; }, false},
        {"flag", [](ZVK& r) { r.ix_coding_flag = true; }, false},
        {"mode", [](ZVK& r) { r.ix_coding_mode = 1; }, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Block block(256);
        block.record.ixs = &block.ixs;
        block.record.rice_k = 3;
        c.change(block.record);
        EXPECT_EQ(!block.fails_untouched(16), c.ok);
        block.record.ixs = nullptr;
        EXPECT_TRUE(block.write(16));
    }
}

// Each section is written into a block that has room for it to the bit, and one bit less.
TEST(Serialize, WhatDoesNotFitFails) {
    constexpr unsigned room = 3 * 112 - 6 - 160;
    struct Case {
        const char* name;
        void (*fill)(Block&);
        unsigned bits;
    };
    const Case cases[] = {
        {"seeds", [](Block& b) { b.seeds.resize(5); }, 160},
        {"list",
         [](Block& b) {
             b.record.add_dmol_instruction(layout_9_1());
             b.record.add_dmol_instruction(layout_9_1());
         },
         48},
        {"used slots",
         [](Block& b) {
             b.centers_1d.resize(8);
             b.record.center_bits = 6;
             b.record.set_centers(&b.centers_1d);
         },
         48},
        {"unused slots",
         [](Block& b) {
             b.centers_2d.resize(1);
             b.record.center_bits = 3;
             b.record.set_centers(&b.centers_2d);
         },
         48},
    };
    for (const Case& c : cases)
        for (const unsigned short_by : {0u, 1u, 8u}) {
            SCOPED_TRACE(c.name);
            SCOPED_TRACE(short_by);
            Block block(112);
            // Indices of 0 and of 2 take 2 and 3 bits; behind the section they fill the rest.
            c.fill(block);
            unsigned left = room - c.bits + short_by;
            if (left % 2 != 0) {
                block.ixs.push_back(2);
                left -= 3;
            }
            block.ixs.resize(block.ixs.size() + left / 2);
            block.record.ixs = &block.ixs;
            block.record.rice_k = 1;
            EXPECT_EQ(!block.fails_untouched(3), short_by == 0);
        }
}

TEST(Serialize, SectionsThatDoNotFitThemselvesFail) {
    struct Case {
        const char* name;
        void (*fill)(Block&);
    };
    // 48 samples of 4 lines leave 30 bits behind the header.
    const Case cases[] = {
        {"seeds", [](Block& b) { b.seeds.resize(2); }},
        {"list", [](Block& b) { b.record.add_dmol_instruction(layout_9_1()); }},
        {"used slots",
         [](Block& b) {
             b.centers_1d.resize(8);
             b.record.center_bits = 4;
             b.record.set_centers(&b.centers_1d);
         }},
        {"unused slots",
         [](Block& b) {
             b.centers_2d.resize(1);
             b.record.center_bits = 2;
             b.record.set_centers(&b.centers_2d);
         }},
        {"long index",
         [](Block& b) {
             b.ixs = {58};
             b.record.rice_k = 1;
             b.record.ixs = &b.ixs;
         }},
        {"endless index",
         [](Block& b) {
             b.ixs = {~std::uint64_t{0}};
             b.record.rice_k = 1;
             b.record.ixs = &b.ixs;
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Block block(48);
        c.fill(block);
        EXPECT_TRUE(block.fails_untouched(4));
    }
}

}  // namespace vela::codec::zvk
