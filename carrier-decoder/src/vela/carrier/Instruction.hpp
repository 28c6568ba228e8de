#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <vela/carrier/BitReader.hpp>

namespace vela::carrier {

/// Numbers that instructions go by.
namespace opcode {
inline constexpr std::uint32_t end = 0;
inline constexpr std::uint32_t input_layout = 30;
inline constexpr std::uint32_t channel_attenuation = 64;
inline constexpr std::uint32_t group_scaler = 65;
inline constexpr std::uint32_t meta_gains = 70;
inline constexpr std::uint32_t orbimix_preset = 71;
inline constexpr std::uint32_t room_type = 80;
inline constexpr std::uint32_t codec_version = 100;
inline constexpr std::uint32_t build_hash = 110;
inline constexpr std::uint32_t program_loudness = 128;
inline constexpr std::uint32_t program_loudness_range = 129;
inline constexpr std::uint32_t maximum_true_peak = 130;
inline constexpr std::uint32_t short_term_loudness = 131;
inline constexpr std::uint32_t momentary_loudness = 132;
inline constexpr std::uint32_t speech_loudness = 133;
}  // namespace opcode

/// One instruction to the decoder, with its operands in the order in which they stand.
struct Instruction {
    std::uint32_t opcode = opcode::end;
    std::vector<std::uint32_t> operands;

    bool operator==(const Instruction&) const = default;
};

/// Reads a list: a tag byte of value 1, then opcodes of 8 bits with their operands, until `End`.
///
/// False, with `why` saying what is wrong, for an unknown tag or opcode, an operand that cannot
/// have been meant (a scaler of no attenuation, a room type above 3, a loudness code outside the
/// range of its parameter), a group or a channel attenuated twice, or a list that does not end.
[[nodiscard]] bool read_instructions(std::vector<Instruction>& out, std::string& why,
                                     BitReader& from);

}  // namespace vela::carrier
