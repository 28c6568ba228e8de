#pragma once

#include <cstdint>
#include <optional>
#include <vela/api/loudness/Parameter.hpp>

namespace vela::dmol {

/// What an instruction tells the decoder.  Only the numbers travel; a decoder knows no others.
enum class Opcode : std::uint32_t {
    End = 0,
    InputLayout = 30,
    ChannelAttenuation = 64,
    GroupScaler = 65,
    MetaGains = 70,
    OrbimixPreset = 71,
    RoomType = 80,
    CodecVersion = 100,
    BuildHash = 110,
    ProgramLoudness = 128,
    ProgramLoudnessRange = 129,
    MaximumTruePeak = 130,
    ShortTermLoudness = 131,
    MomentaryLoudness = 132,
    SpeechLoudness = 133,
};

/// The opcode that carries a loudness parameter; nothing for `None` and beyond.  The order of the
/// two enumerations differs: speech loudness is parameter 2 and the last opcode.
[[nodiscard]] std::optional<Opcode> opcode_of(api::loudness::Parameter parameter);

/// Widths in bits of the operands behind an 8-bit opcode; 0 where the opcode takes none.
struct Payload {
    unsigned arg2_bits = 0;
    unsigned arg3_bits = 0;

    bool operator==(const Payload&) const = default;
};

/// Nothing for a number that is no opcode: a decoder could not tell where the next one starts.
[[nodiscard]] std::optional<Payload> payload_of(Opcode opcode);

}  // namespace vela::dmol
