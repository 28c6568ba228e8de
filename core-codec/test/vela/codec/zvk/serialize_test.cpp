#include <gtest/gtest.h>

#include <limits>
#include <vela/codec/mux/BitMap.hpp>
#include <vela/codec/mux/details/compute_crc.hpp>
#include <vela/codec/zvk/Block.hpp>
#include <vela/codec/zvk/Text.hpp>

namespace vela::codec::zvk {

using mux::test::record_bits;
using test::bits;
using test::Block;
using test::layout_9_1;
using test::padded;
using test::range_of;

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

// Longer than what is put at a time.
TEST(Serialize, IndicesMayHaveLongPrefixes) {
    for (const unsigned k : {1, 4, 7})
        for (const unsigned q : {22, 23, 24, 25, 26, 31, 32, 33, 48, 49, 50, 300}) {
            SCOPED_TRACE(q);
            Block block(256);
            block.ixs = {(q << k) + 1, q << k, (q << k) + (1u << k) - 1};
            block.record.ixs = &block.ixs;
            block.record.rice_k = static_cast<std::uint8_t>(k);
            const std::string prefix = std::string(q, '1') + '0';
            const std::string body = block.body(9);
            EXPECT_EQ(body, padded(prefix + '1' + std::string(k - 1, '0') + prefix +
                                       std::string(k, '0') + prefix + std::string(k, '1'),
                                   body.size()));
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

}  // namespace vela::codec::zvk
