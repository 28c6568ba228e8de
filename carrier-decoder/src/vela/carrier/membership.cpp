#include <algorithm>
#include <vela/carrier/details/refuse.hpp>
#include <vela/carrier/membership.hpp>

namespace vela::carrier {

using details::refuse;

bool check_members(std::string& why, const Block& block, std::span<const ChannelId> members) {
    auto from = members.begin();
    for (const ChannelId channel : block.header.channels) {
        from = std::find(from, members.end(), channel);
        if (from == members.end()) {
            return refuse(why, "channel ", api::Channel::create(channel),
                          " does not belong there in this carrier");
        }
        ++from;
    }
    for (const Instruction& instruction : block.instructions) {
        if (instruction.opcode != opcode::channel_attenuation) continue;
        if (std::ranges::find(members, instruction.operands[0]) == members.end()) {
            return refuse(why, "channel ",
                          api::Channel::create(static_cast<ChannelId>(instruction.operands[0])),
                          " is attenuated but does not belong in this carrier");
        }
    }
    return true;
}

bool check_recipe(std::string& why, const Block& block, const CarrierRecipe& recipe,
                  const CarrierRecipe::Group& group) {
    const auto& list = block.instructions;
    if (std::ranges::count(list, opcode::input_layout, &Instruction::opcode) != 1 ||
        list.front().opcode != opcode::input_layout) {
        return refuse(why, "the instructions do not begin with the one input layout");
    }
    const std::uint32_t code = list.front().operands[0];
    if (code != recipe.code) {
        return refuse(why, "the input layout has the code ", code, ", not ", recipe.code,
                      ": the block belongs to another layout");
    }
    return check_members(why, block, group.active_members());
}

}  // namespace vela::carrier
