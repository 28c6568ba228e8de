#include <gtest/gtest.h>

#include <vela/codec/zvk/Block.hpp>

namespace vela::codec::zvk {

using test::Block;
using test::layout_9_1;

// Sync word and CRC take 32 of its 48 bits.
TEST(SerializeFailure, SixteenSamplesOfThreeLinesCannotHoldTheHeader) {
    Block block(16);
    EXPECT_TRUE(block.fails_untouched(3));
    EXPECT_TRUE(block.fails_untouched(9));
    EXPECT_TRUE(block.write(10));
}

TEST(SerializeFailure, BlocksBelowSixteenSamplesFail) {
    for (const std::size_t size : {0u, 1u, 15u}) {
        Block block(256);
        block.samples.resize(size);
        EXPECT_TRUE(block.fails_untouched(16)) << size;
    }
    EXPECT_FALSE(serialize<24>({}, ZVK(), 16));
}

TEST(SerializeFailure, TheHeaderMustSayWhetherThereIsAList) {
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

TEST(SerializeFailure, BrokenInstructionsFail) {
    Block block(256);
    dmol::Instruction instruction;
    instruction.set_opcode(dmol::Opcode::RoomType);
    block.record.add_dmol_instruction(instruction);
    EXPECT_TRUE(block.fails_untouched(16));
}

TEST(SerializeFailure, OtherCountsOfSeedsFail) {
    for (const std::size_t count : {1u, 3u, 4u, 6u}) {
        Block block(256);
        block.seeds.resize(count);
        EXPECT_TRUE(block.fails_untouched(16)) << count;
    }
}

TEST(SerializeFailure, MoreCentersThanSlotsFail) {
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

TEST(SerializeFailure, CentersNeedASignAndABit) {
    for (const int center_bits : {0, 1}) {
        Block block(256);
        block.centers_1d.resize(1);
        block.record.set_centers(&block.centers_1d);
        block.record.center_bits = static_cast<std::uint8_t>(center_bits);
        EXPECT_TRUE(block.fails_untouched(16));
    }
}

TEST(SerializeFailure, OtherCodingsOfIndicesFail) {
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
TEST(SerializeFailure, WhatDoesNotFitFails) {
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

TEST(SerializeFailure, SectionsThatDoNotFitThemselvesFail) {
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
