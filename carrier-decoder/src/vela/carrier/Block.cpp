#include <algorithm>
#include <vela/carrier/Block.hpp>
#include <vela/carrier/scale.hpp>

namespace vela::carrier {

const Instruction* Block::find(std::uint32_t opcode) const {
    const auto found = std::ranges::find(instructions, opcode, &Instruction::opcode);
    return found == instructions.end() ? nullptr : &*found;
}

std::uint32_t Block::group_scaler_ix() const {
    const Instruction* scaler = find(opcode::group_scaler);
    return scaler == nullptr ? 0 : scaler->operands[0];
}

std::uint32_t Block::attenuation_ix(api::channel::id::Value channel) const {
    for (const Instruction& instruction : instructions) {
        if (instruction.opcode == opcode::channel_attenuation &&
            instruction.operands[0] == channel) {
            return instruction.operands[1];
        }
    }
    return 0;
}

Channels Block::unattenuated() const {
    Channels out = channels;
    for (auto& [channel, samples] : out)
        undo_attenuation(samples, attenuation_ix(channel));
    return out;
}

}  // namespace vela::carrier
