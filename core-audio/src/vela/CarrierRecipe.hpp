#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vela/api/SpeakerLayout.hpp>

namespace vela {

/// How one input layout folds into its carrier layout.
///
/// The input layout alone decides: it has one carrier, one code by which a decoder knows it, and
/// one list of groups.  The table is constant-initialised, so it may be used before `main`.
struct CarrierRecipe {
    /// One carrier channel and the one to three input channels that are mixed into it.
    ///
    /// An input channel may stand in several groups (`Top` in four); it is then in each in full.
    /// The carrier is the first member, except that stereo goes into a mono `Center`.
    struct Group {
        api::channel::id::Value carrier = api::channel::id::None;
        /// The first `nr_members` count, in mixing order.
        std::array<api::channel::id::Value, 3> members{};
        std::size_t nr_members = 0;

        [[nodiscard]] constexpr std::span<const api::channel::id::Value> active_members() const {
            return std::span(members).first(nr_members);
        }
    };

    /// Layout masks, the low 25 bits.
    std::uint32_t input = 0;
    std::uint32_t carrier = 0;
    /// What the record says of the input layout.  The codes follow no rule; decoders expect them.
    std::uint32_t code = 0;
    /// One group per channel of the carrier, in the order in which candidates are made.
    std::span<const Group> groups;
};

/// The recipe of an input layout, or null for a layout that has no carrier.
[[nodiscard]] const CarrierRecipe* find_recipe(const api::SpeakerLayout& input);

/// All recipes.
[[nodiscard]] std::span<const CarrierRecipe> carrier_recipes();

}  // namespace vela
