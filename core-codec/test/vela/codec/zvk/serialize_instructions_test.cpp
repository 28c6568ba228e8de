#include <gtest/gtest.h>

#include <vela/codec/zvk/Text.hpp>
#include <vela/codec/zvk/serialize_instructions.hpp>

namespace vela::codec::zvk {

using dmol::Instruction;
using dmol::Opcode;
using test::bits;
using test::Text;

constexpr unsigned plenty = 10000;

struct Counter {
    using Cursor = unsigned;
    static void put(Cursor& at, std::uint32_t, unsigned width) { at += width; }
};

Instruction instruction(std::uint32_t opcode) {
    Instruction made;
    made.set_opcode(static_cast<Opcode>(opcode));
    return made;
}
Instruction instruction(std::uint32_t opcode, std::uint32_t arg2) {
    Instruction made = instruction(opcode);
    made.arg2 = arg2;
    return made;
}
Instruction instruction(std::uint32_t opcode, std::uint32_t arg2, std::uint32_t arg3) {
    Instruction made = instruction(opcode, arg2);
    made.arg3 = arg3;
    return made;
}

std::string written(const std::vector<Instruction>& list) {
    std::string out;
    unsigned left = plenty;
    EXPECT_TRUE(serialize<Text>(out, left, list));
    EXPECT_EQ(left, plenty - out.size());
    return out;
}

bool fails(const Instruction& one) {
    std::string out;
    unsigned left = plenty;
    return !serialize<Text>(out, left, {one});
}

const std::string tag = "00000001";
const std::string end = "00000000";

TEST(SerializeInstructions, PayloadOfEveryOpcode) {
    struct Case {
        Instruction one;
        std::string payload;
    };
    const Case cases[] = {
        {instruction(30, 71), bits(71, 8)},
        {instruction(64, 9, 240), bits(9, 8) + bits(240, 8)},
        {instruction(65, 240), bits(240, 8)},
        {instruction(70, 0x87654321), bits(0x87654321, 32)},
        {instruction(71, 255), bits(255, 8)},
        {instruction(80, 3), bits(3, 8)},
        {instruction(100, 0x030201), bits(3, 8) + bits(2, 8) + bits(1, 8)},
        {instruction(110, 0xDCA34E54), bits(0xDCA34E54, 32)},
        {instruction(128, 1), bits(1, 32)},
        {instruction(129, 2), bits(2, 32)},
        {instruction(130, 3), bits(3, 32)},
        {instruction(131, 4), bits(4, 32)},
        {instruction(132, 5), bits(5, 32)},
        {instruction(133, 0xFFFFFFFF), bits(0xFFFFFFFF, 32)},
    };
    for (const Case& c : cases) {
        const auto opcode = static_cast<std::uint32_t>(c.one.opcode);
        SCOPED_TRACE(opcode);
        EXPECT_EQ(written({c.one}), tag + bits(opcode, 8) + c.payload + end);
    }
}

TEST(SerializeInstructions, OnlyTheLowBitsOfAWideOperandTravel) {
    EXPECT_EQ(written({instruction(30, 0xFFFFFF01)}), tag + bits(30, 8) + bits(1, 8) + end);
    EXPECT_EQ(written({instruction(100, 0xFF000001)}), tag + bits(100, 8) + bits(1, 24) + end);
}

TEST(SerializeInstructions, AListThatEndsItselfGetsNoSecondEnd) {
    EXPECT_EQ(written({instruction(0)}), tag + end);
    EXPECT_EQ(written({instruction(65, 1), instruction(0)}), tag + bits(65, 8) + bits(1, 8) + end);
    EXPECT_EQ(written({instruction(0), instruction(65, 1)}),
              tag + end + bits(65, 8) + bits(1, 8) + end);
}

TEST(SerializeInstructions, NoInstructionsNoBits) {
    EXPECT_EQ(written({}), "");
}

TEST(SerializeInstructions, CountsTheBitsThatItWrites) {
    std::vector<Instruction> list;
    for (const Instruction& next :
         {instruction(30, 1), instruction(64, 2, 3), instruction(100, 4), instruction(133, 5),
          instruction(0), instruction(110, 6), instruction(0)}) {
        list.push_back(next);
        unsigned count = 0;
        unsigned left = plenty;
        EXPECT_TRUE(serialize<Counter>(count, left, list));
        EXPECT_EQ(count, written(list).size());
        EXPECT_EQ(left, plenty - count);
    }
}

TEST(SerializeInstructions, UnknownOpcodesFail) {
    for (const std::uint32_t opcode : {1u, 29u, 66u, 67u, 68u, 69u, 127u, 134u, 255u, 256u + 30u})
        EXPECT_TRUE(fails(instruction(opcode, 1, 1))) << opcode;
}

TEST(SerializeInstructions, MissingOperandsFail) {
    for (const std::uint32_t opcode :
         {30u, 64u, 65u, 70u, 71u, 80u, 100u, 110u, 128u, 129u, 130u, 131u, 132u, 133u})
        EXPECT_TRUE(fails(instruction(opcode))) << opcode;
    EXPECT_TRUE(fails(instruction(64, 1)));
    Instruction without_channel = instruction(64);
    without_channel.arg3 = 1;
    EXPECT_TRUE(fails(without_channel));
}

TEST(SerializeInstructions, AShortageFailsWriterAndCounterAlike) {
    const std::vector<Instruction> list{instruction(30, 1), instruction(64, 2, 3)};
    const auto size = static_cast<unsigned>(written(list).size());
    for (unsigned bits_left = 0; bits_left <= size; ++bits_left) {
        std::string out;
        unsigned left = bits_left;
        EXPECT_EQ(serialize<Text>(out, left, list), bits_left == size);
        unsigned count = 0;
        left = bits_left;
        EXPECT_EQ(serialize<Counter>(count, left, list), bits_left == size);
        EXPECT_EQ(count, out.size());
    }
}

}  // namespace vela::codec::zvk
