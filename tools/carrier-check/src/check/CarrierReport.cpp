#include <algorithm>
#include <check/CarrierReport.hpp>
#include <sstream>
#include <vela/carrier/Instruction.hpp>

namespace check {

void CarrierReport::add(std::size_t frame, const vela::carrier::Block& block) {
    ++nr_sound;
    bitlines.push_back(block.nr_bitlines);
    centers.push_back(block.centers.size());
    spare_bits.push_back(block.nr_spare_bits);
    for (const auto& instruction : block.instructions)
        instructions[{instruction.opcode, instruction.operands}].push_back(frame);
}

void CarrierReport::add_problem(std::string sentence) {
    problems.push_back(std::move(sentence));
}

template <typename T>
Spread<T> spread_of(std::vector<T> values) {
    if (values.empty()) return {};
    std::ranges::sort(values);
    return {values.front(), values[(values.size() - 1) / 2], values.back()};
}

template Spread<unsigned> spread_of(std::vector<unsigned> values);
template Spread<std::size_t> spread_of(std::vector<std::size_t> values);

std::string runs_of(const std::vector<std::size_t>& numbers) {
    std::ostringstream text;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        text << (i == 0 ? "" : " ") << numbers[i];
        if (last > i) text << '-' << numbers[last];
        i = last + 1;
    }
    return text.str();
}

const char* name_of(std::uint32_t opcode) {
    using namespace vela::carrier;
    switch (opcode) {
        case opcode::input_layout:
            return "InputLayout";
        case opcode::channel_attenuation:
            return "ChannelAttenuation";
        case opcode::group_scaler:
            return "GroupScaler";
        case opcode::meta_gains:
            return "MetaGains";
        case opcode::orbimix_preset:
            return "OrbimixPreset";
        case opcode::room_type:
            return "RoomType";
        case opcode::codec_version:
            return "CodecVersion";
        case opcode::build_hash:
            return "BuildHash";
        case opcode::program_loudness:
            return "ProgramLoudness";
        case opcode::program_loudness_range:
            return "ProgramLoudnessRange";
        case opcode::maximum_true_peak:
            return "MaximumTruePeak";
        case opcode::short_term_loudness:
            return "ShortTermLoudness";
        case opcode::momentary_loudness:
            return "MomentaryLoudness";
        case opcode::speech_loudness:
            return "SpeechLoudness";
        default:
            return "Unknown";
    }
}

}  // namespace check
