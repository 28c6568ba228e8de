#include <gtest/gtest.h>

#include <vela/codec/zvk/ZVK.hpp>

namespace vela::codec::zvk {

TEST(ZVK, StartsEmpty) {
    const ZVK record;
    for (const api::Channel& channel : record.channels)
        EXPECT_FALSE(channel.valid());
    EXPECT_TRUE(record.instructions.empty());
    EXPECT_EQ(record.mix_seeds, nullptr);
    EXPECT_EQ(record.centers_1d, nullptr);
    EXPECT_EQ(record.centers_2d, nullptr);
    EXPECT_EQ(record.ixs, nullptr);
    EXPECT_EQ(record.frame_size_code, 0);
    EXPECT_EQ(record.nr_instruction_lists, 0);
}

TEST(ZVK, KeepsItsVersion) {
    ZVK record;
    EXPECT_TRUE(record.set_version(1, 10));
    EXPECT_EQ(record.version_major, 1);
    EXPECT_EQ(record.version_minor, 10);
}

TEST(ZVK, FrameSizes) {
    struct Case {
        std::uint64_t size;
        bool ok;
        int code;
    };
    const Case cases[] = {
        {16, true, 0},     {32, true, 1},    {992, true, 61},   {1000, true, 61},
        {1008, true, 62},  {1024, true, 63}, {4096, true, 255}, {4112, true, 0},
        {0, false, 77},    {8, false, 77},   {17, false, 77},   {999, false, 77},
        {1001, false, 77}, {500, false, 77}, {2000, true, 124}, {3000, false, 77},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.size);
        ZVK record;
        record.frame_size_code = 77;
        EXPECT_EQ(record.set_frame_size(c.size), c.ok);
        EXPECT_EQ(record.frame_size_code, c.code);
    }
}

// 15 and 16 bit-lines leave mixes of 9 and 8 bits, which the header cannot tell.
TEST(ZVK, MixWidths) {
    for (unsigned nr_bitlines = 3; nr_bitlines <= 16; ++nr_bitlines) {
        SCOPED_TRACE(nr_bitlines);
        ZVK record;
        record.mix_bw_code = 77;
        EXPECT_EQ(record.set_mix_bw(24 - nr_bitlines), nr_bitlines <= 14);
        EXPECT_EQ(record.mix_bw_code, nr_bitlines <= 14 ? 14 - nr_bitlines : 77);
    }
}

TEST(ZVK, CentersSetTheirSizeClass) {
    const ZVK::Centers1 nine(9);
    const ZVK::Centers2 hundred(100);
    ZVK record;
    EXPECT_TRUE(record.set_centers(&nine));
    EXPECT_EQ(record.centers_1d, &nine);
    EXPECT_EQ(record.error_center_ix, 1);
    EXPECT_TRUE(record.set_centers(&hundred));
    EXPECT_EQ(record.centers_2d, &hundred);
    EXPECT_EQ(record.error_center_ix, 21);
    const ZVK::Centers1* none = nullptr;
    EXPECT_TRUE(record.set_centers(none));
    EXPECT_EQ(record.centers_1d, nullptr);
    EXPECT_EQ(record.error_center_ix, 0);
}

TEST(ZVK, TheFirstInstructionOpensTheList) {
    ZVK record;
    dmol::Instruction instruction;
    instruction.set_opcode(dmol::Opcode::GroupScaler);
    for (unsigned value = 1; value <= 3; ++value) {
        instruction.arg2 = value;
        EXPECT_TRUE(record.add_dmol_instruction(instruction));
        EXPECT_EQ(record.nr_instruction_lists, 1);
        ASSERT_EQ(record.instructions.size(), value);
        EXPECT_EQ(record.instructions.back().arg2, value);
    }
}

}  // namespace vela::codec::zvk
