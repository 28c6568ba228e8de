#pragma once

#include <cstdint>
#include <optional>
#include <vela/dmol/Opcode.hpp>

namespace vela::dmol {

/// One item of the list in which a record carries everything besides the clustered deltas.
///
/// Operands are numbers of up to 32 bits; of a value wider than its field only the low bits
/// travel.  `arg2`, and `arg3` for `ChannelAttenuation`, are all that the opcodes of this version
/// use.
struct Instruction {
    Opcode opcode = Opcode::End;
    std::optional<std::uint32_t> arg0;
    std::optional<std::uint32_t> arg1;
    std::optional<std::uint32_t> arg2;
    std::optional<std::uint32_t> arg3;

    /// Always true; whether the number is a known opcode shows when the record is written.
    bool set_opcode(Opcode value) {
        opcode = value;
        return true;
    }
};

}  // namespace vela::dmol
