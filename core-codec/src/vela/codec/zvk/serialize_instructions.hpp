#pragma once

#include <cstdint>
#include <optional>
#include <vector>
#include <vela/codec/zvk/details/put.hpp>
#include <vela/dmol/Instruction.hpp>

namespace vela::codec::zvk {

namespace details {

template <typename Writer>
[[nodiscard]] bool put_operand(typename Writer::Cursor& at, unsigned& bits_left,
                               const std::optional<std::uint32_t>& operand, unsigned width) {
    if (width == 0) return true;
    return operand && put<Writer>(at, bits_left, *operand, width);
}

template <typename Writer>
[[nodiscard]] bool put_instruction(typename Writer::Cursor& at, unsigned& bits_left,
                                   const dmol::Instruction& instruction) {
    const auto payload = dmol::payload_of(instruction.opcode);
    return payload &&
           put<Writer>(at, bits_left, static_cast<std::uint32_t>(instruction.opcode), 8) &&
           put_operand<Writer>(at, bits_left, instruction.arg2, payload->arg2_bits) &&
           put_operand<Writer>(at, bits_left, instruction.arg3, payload->arg3_bits);
}

}  // namespace details

/// Writes an instruction list through `Writer` (a `Cursor` and a `put(Cursor&, value, width)` that
/// moves it on), so that the bits can be counted by the same walk that writes them.
///
///     list         tag instruction* end      nothing at all for an empty list
///     tag          8 bits, 1
///     instruction  opcode, 8 bits; arg2, arg3 in the widths of `dmol::payload_of`
///     end          opcode 0, 8 bits; only once where the list itself ends in it
///
/// `bits_left` goes down with what is written.  False at the first field that does not fit, at an
/// unknown opcode, and where an operand is missing that the opcode asks for.
template <typename Writer>
[[nodiscard]] bool serialize(typename Writer::Cursor& at, unsigned& bits_left,
                             const std::vector<dmol::Instruction>& instructions) {
    constexpr std::uint32_t tag = 1;
    constexpr auto end = static_cast<std::uint32_t>(dmol::Opcode::End);
    if (instructions.empty()) return true;
    if (!details::put<Writer>(at, bits_left, tag, 8)) return false;
    for (const dmol::Instruction& instruction : instructions)
        if (!details::put_instruction<Writer>(at, bits_left, instruction)) return false;
    if (instructions.back().opcode == dmol::Opcode::End) return true;
    return details::put<Writer>(at, bits_left, end, 8);
}

}  // namespace vela::codec::zvk
