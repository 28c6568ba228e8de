#include <gtest/gtest.h>

#include <vela/dmol/Instruction.hpp>

namespace vela::dmol {

TEST(Instruction, StartsWithoutOperands) {
    const Instruction fresh;
    for (const auto& arg : {fresh.arg0, fresh.arg1, fresh.arg2, fresh.arg3})
        EXPECT_FALSE(arg.has_value());
}

TEST(Instruction, TakesAnyOpcode) {
    Instruction instruction;
    EXPECT_TRUE(instruction.set_opcode(Opcode::RoomType));
    EXPECT_EQ(instruction.opcode, Opcode::RoomType);
    EXPECT_TRUE(instruction.set_opcode(static_cast<Opcode>(66)));
    EXPECT_EQ(static_cast<std::uint32_t>(instruction.opcode), 66u);
}

TEST(Instruction, CopiesOperandsWithTheirPresence) {
    Instruction instruction;
    EXPECT_TRUE(instruction.set_opcode(Opcode::InputLayout));
    instruction.arg2 = 0;
    const Instruction copy = instruction;
    EXPECT_EQ(copy.opcode, Opcode::InputLayout);
    EXPECT_EQ(copy.arg2, 0u);
    EXPECT_FALSE(copy.arg3.has_value());
}

}  // namespace vela::dmol
