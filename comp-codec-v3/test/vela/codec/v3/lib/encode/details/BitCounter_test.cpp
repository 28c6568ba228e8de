#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/details/BitCounter.hpp>
#include <vela/codec/zvk/serialize_instructions.hpp>

namespace vela::codec::v3::encode::details {
namespace {

using dmol::Opcode;

TEST(BitCounter, CountsTheBitsOfAList) {
    struct Case {
        const char* name;
        std::vector<Opcode> opcodes;
        unsigned bits;
    };
    const Case cases[] = {
        {"nothing", {}, 0},
        {"tag, opcode, a byte, end", {Opcode::InputLayout}, 8 + 16 + 8},
        {"an end of its own", {Opcode::InputLayout, Opcode::End}, 8 + 16 + 8},
        {"three bytes", {Opcode::CodecVersion}, 8 + 32 + 8},
        {"four bytes", {Opcode::MetaGains, Opcode::BuildHash}, 8 + 40 + 40 + 8},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<dmol::Instruction> list(c.opcodes.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            list[i].set_opcode(c.opcodes[i]);
            list[i].arg2 = 1;
        }
        unsigned count = 5;
        unsigned bits_left = 1000;
        EXPECT_TRUE(zvk::serialize<BitCounter>(count, bits_left, list));
        EXPECT_EQ(count, 5 + c.bits);
        EXPECT_EQ(bits_left, 1000 - c.bits);
    }
}

}  // namespace
}  // namespace vela::codec::v3::encode::details
