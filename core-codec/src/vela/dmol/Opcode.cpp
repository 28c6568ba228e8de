#include <algorithm>
#include <array>
#include <vela/dmol/Opcode.hpp>

namespace vela::dmol {

namespace {

struct Row {
    Opcode opcode;
    Payload payload;
};

constexpr std::array<Row, 15> rows{{
    {Opcode::End, {0, 0}},
    {Opcode::InputLayout, {8, 0}},
    {Opcode::ChannelAttenuation, {8, 8}},
    {Opcode::GroupScaler, {8, 0}},
    {Opcode::MetaGains, {32, 0}},
    {Opcode::OrbimixPreset, {8, 0}},
    {Opcode::RoomType, {8, 0}},
    {Opcode::CodecVersion, {24, 0}},
    {Opcode::BuildHash, {32, 0}},
    {Opcode::ProgramLoudness, {32, 0}},
    {Opcode::ProgramLoudnessRange, {32, 0}},
    {Opcode::MaximumTruePeak, {32, 0}},
    {Opcode::ShortTermLoudness, {32, 0}},
    {Opcode::MomentaryLoudness, {32, 0}},
    {Opcode::SpeechLoudness, {32, 0}},
}};

// By `api::loudness::Parameter`.
constexpr std::array<Opcode, 6> loudness_opcodes{
    Opcode::ProgramLoudness, Opcode::ProgramLoudnessRange, Opcode::SpeechLoudness,
    Opcode::MaximumTruePeak, Opcode::ShortTermLoudness,    Opcode::MomentaryLoudness};

}  // namespace

std::optional<Opcode> opcode_of(api::loudness::Parameter parameter) {
    const auto ix = static_cast<std::uint32_t>(parameter);
    if (ix >= loudness_opcodes.size()) return std::nullopt;
    return loudness_opcodes[ix];
}

std::optional<Payload> payload_of(Opcode opcode) {
    const auto* row = std::ranges::find(rows, opcode, &Row::opcode);
    if (row == rows.end()) return std::nullopt;
    return row->payload;
}

}  // namespace vela::dmol
