#pragma once

#include <span>
#include <string>
#include <vela/CarrierRecipe.hpp>
#include <vela/carrier/Block.hpp>

namespace vela::carrier {

/// Whether a block may stand in a carrier into which `members` are mixed, in that order.
///
/// A block may leave members out that are silent.  False, with the reason in `why`, if it holds or
/// attenuates any other channel, or holds its channels in another order.
[[nodiscard]] bool check_members(std::string& why, const Block& block,
                                 std::span<const ChannelId> members);

/// The same for the carrier of `group`, and that the block names the input layout of `recipe`,
/// first of all its instructions and once.
[[nodiscard]] bool check_recipe(std::string& why, const Block& block, const CarrierRecipe& recipe,
                                const CarrierRecipe::Group& group);

}  // namespace vela::carrier
