#include <algorithm>
#include <vela/api/Channel.hpp>
#include <vela/carrier/Instruction.hpp>
#include <vela/carrier/details/refuse.hpp>

namespace vela::carrier {

namespace {

using details::refuse;

using Operands = std::vector<std::uint32_t>;

constexpr std::uint32_t last_scaler_ix = 240;
constexpr std::uint32_t mute_ix = 255;

bool anything(const Operands&) {
    return true;
}

bool is_scaler(std::uint32_t ix) {
    return ix >= 1 && ix <= last_scaler_ix;
}

bool is_attenuation(const Operands& operands) {
    return operands[0] < api::channel::id::count &&
           (is_scaler(operands[1]) || operands[1] == mute_ix);
}

bool is_group_scaler(const Operands& operands) {
    return is_scaler(operands[0]);
}

bool is_room_type(const Operands& operands) {
    return operands[0] <= 3;
}

/// A code of 10 bits always, and two more that may be absent, each behind a bit that says so.
template <std::uint32_t max_code>
bool is_loudness(const Operands& operands) {
    const std::uint32_t word = operands[0];
    const auto optional_code = [](std::uint32_t present, std::uint32_t code) {
        return present != 0 ? code <= max_code : code == 0;
    };
    return word >> 22 <= max_code && optional_code(word >> 21 & 1u, word >> 11 & 0x3FFu) &&
           optional_code(word >> 10 & 1u, word & 0x3FFu);
}

struct Row {
    std::uint32_t opcode;
    std::vector<unsigned> widths;
    bool (*plausible)(const Operands&);
};

const std::vector<Row>& rows() {
    static const std::vector<Row> table = {
        {opcode::input_layout, {8}, anything},
        {opcode::channel_attenuation, {8, 8}, is_attenuation},
        {opcode::group_scaler, {8}, is_group_scaler},
        {opcode::meta_gains, {32}, anything},
        {opcode::orbimix_preset, {8}, anything},
        {opcode::room_type, {8}, is_room_type},
        {opcode::codec_version, {24}, anything},
        {opcode::build_hash, {32}, anything},
        {opcode::program_loudness, {32}, is_loudness<330>},
        {opcode::program_loudness_range, {32}, is_loudness<300>},
        {opcode::maximum_true_peak, {32}, is_loudness<50>},
        {opcode::short_term_loudness, {32}, is_loudness<1000>},
        {opcode::momentary_loudness, {32}, is_loudness<1000>},
        {opcode::speech_loudness, {32}, is_loudness<330>},
    };
    return table;
}

bool read_operands(Instruction& out, std::string& why, BitReader& from) {
    const auto row =
        std::ranges::find_if(rows(), [&](const Row& r) { return r.opcode == out.opcode; });
    if (row == rows().end()) return refuse(why, "opcode ", out.opcode, " is unknown");
    for (const unsigned width : row->widths) {
        std::uint32_t operand = 0;
        if (!from.take(operand, width)) {
            return refuse(why, "the record ends within instruction ", out.opcode);
        }
        out.operands.push_back(operand);
    }
    if (row->plausible(out.operands)) return true;
    return refuse(why, "instruction ", out.opcode, " has the impossible operand ",
                  out.operands.back());
}

/// Two attenuations of one thing would leave open which of them counts.
bool check_repetition(std::string& why, const std::vector<Instruction>& list,
                      const Instruction& next) {
    const bool attenuates =
        next.opcode == opcode::channel_attenuation || next.opcode == opcode::group_scaler;
    const auto same_target = [&](const Instruction& earlier) {
        return earlier.opcode == next.opcode &&
               (next.opcode == opcode::group_scaler || earlier.operands[0] == next.operands[0]);
    };
    if (!attenuates || std::ranges::none_of(list, same_target)) return true;
    return refuse(why, "instruction ", next.opcode, " stands twice for one target");
}

}  // namespace

bool read_instructions(std::vector<Instruction>& out, std::string& why, BitReader& from) {
    constexpr std::uint32_t list_tag = 1;
    std::uint32_t tag = 0;
    if (!from.take(tag, 8)) return refuse(why, "the record ends before the instruction list");
    if (tag != list_tag) return refuse(why, "the instruction list has the unknown tag ", tag);
    out.clear();
    for (;;) {
        Instruction next;
        if (!from.take(next.opcode, 8)) {
            return refuse(why, "the instruction list does not end within the record");
        }
        if (next.opcode == opcode::end) return true;
        if (!read_operands(next, why, from) || !check_repetition(why, out, next)) return false;
        out.push_back(std::move(next));
    }
}

}  // namespace vela::carrier
