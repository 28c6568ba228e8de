#include <vela/codec/v3/lib/encode/Muxer.hpp>
#include <vela/codec/v3/lib/encode/details/BitCounter.hpp>
#include <vela/codec/zvk/serialize.hpp>
#include <vela/codec/zvk/serialize_instructions.hpp>
#include <vela/dmol/Instruction.hpp>
#include <vela/dmol/layout_code.hpp>
#include <vela/pcm/shift.hpp>

namespace vela::codec::v3::encode {

namespace {

constexpr unsigned sample_bits = 24;
constexpr std::uint8_t record_version_major = 1;
constexpr std::uint8_t record_version_minor = 10;
constexpr std::uint32_t nr_room_types = 4;

bool add(Group& group, dmol::Opcode opcode, std::uint32_t arg2,
         std::optional<std::uint32_t> arg3 = std::nullopt) {
    dmol::Instruction instruction;
    if (!instruction.set_opcode(opcode)) return false;
    instruction.arg2 = arg2;
    instruction.arg3 = arg3;
    return group.record.add_dmol_instruction(instruction);
}

bool add_layout(Group& group) {
    std::uint32_t code = 0;
    return dmol::layout_code(code, group.input_layout, group.output_layout) &&
           add(group, dmol::Opcode::InputLayout, code);
}

bool add_loudness(Group& group) {
    if (!group.loudness) return true;
    const auto opcode = dmol::opcode_of(group.loudness->first);
    return opcode && add(group, *opcode, group.loudness->second);
}

bool add_room_type(Group& group) {
    if (!group.room_type) return true;
    return *group.room_type < nr_room_types && add(group, dmol::Opcode::RoomType, *group.room_type);
}

bool add_attenuations(Group& group) {
    for (const auto& [key, attn_ix] : group.orig_attn)
        if (attn_ix != 0 &&
            !add(group, dmol::Opcode::ChannelAttenuation, key.channel.id(), attn_ix))
            return false;
    return true;
}

bool add_version(Group& group) {
    if (!group.version) return true;
    const std::uint32_t packed =
        group.version->major * 65536u + group.version->minor * 256u + group.version->patch;
    return add(group, dmol::Opcode::CodecVersion, packed);
}

bool add_optional(Group& group, dmol::Opcode opcode, std::optional<std::uint32_t> arg2) {
    return !arg2 || add(group, opcode, *arg2);
}

bool add_scaler(Group& group) {
    return group.scaler_ix == 0 || add(group, dmol::Opcode::GroupScaler, group.scaler_ix);
}

// In the order in which a decoder meets them.
bool add_instructions(Group& group) {
    return add_optional(group, dmol::Opcode::MetaGains, group.meta) &&
           add_optional(group, dmol::Opcode::OrbimixPreset, group.preset) && add_loudness(group) &&
           add_room_type(group) && add_attenuations(group) && add_version(group) &&
           add_optional(group, dmol::Opcode::BuildHash, group.git_hash) && add_scaler(group);
}

bool instructions_fit(const Group& group) {
    unsigned count = 0;
    unsigned bits_left = group.budget.instruction_bits;
    return zvk::serialize<details::BitCounter>(count, bits_left, group.record.instructions) &&
           count <= group.budget.instruction_bits;
}

}  // namespace

bool Muxer::operator()(Group& group) const {
    if (group.mixed.size() != group.size()) return false;
    if (!fill_header_(group)) return false;
    if (!add_instructions(group) || !instructions_fit(group)) return false;
    if (!fill_sections_(group)) return false;

    group.frame.bit_depth = sample_bits;
    group.frame.set_data(group.mixed.begin(), group.mixed.end());
    if (!pcm::shift_left(group.nr_bitlines, group.frame)) return false;
    return zvk::serialize<sample_bits>(group.frame.write_range(), group.record, group.nr_bitlines);
}

bool Muxer::fill_header_(Group& group) const {
    auto& record = group.record;
    if (!record.set_version(record_version_major, record_version_minor)) return false;
    if (!record.set_frame_size(group.size())) return false;
    record.encoded_flag = true;
    record.native_content = native_content;
    record.dither_enabled = group.dither;
    if (!add_layout(group)) return false;

    if (group.rescaled.size() > record.channels.size()) return false;
    for (std::size_t i = 0; i < group.rescaled.size(); ++i)
        record.channels[i] = group.rescaled[i].key.channel;
    return record.set_mix_bw(sample_bits - group.nr_bitlines);
}

bool Muxer::fill_sections_(Group& group) {
    auto& record = group.record;
    record.mix_seeds = &group.mix_seeds;
    switch (group.active.size()) {
        case 1:
            return true;
        case 2:
            if (!record.set_centers(&group.centers_1d)) return false;
            break;
        case 3:
            if (!record.set_centers(&group.centers_2d)) return false;
            break;
        default:
            return false;
    }
    record.ixs = &group.ixs;
    return true;
}

}  // namespace vela::codec::v3::encode
