#pragma once

#include <cstdint>
#include <string_view>
#include <vela/api/Channel.hpp>

namespace vela::api {

/// A channel and which of its signals: the key of all audio containers.
///
/// Variant 0 is the main signal; for `Ambisonics` it is the index of the component in "WXYZRSTUV".
struct ChannelVariant {
    Channel channel;
    std::uint32_t variant = 0;

    ChannelVariant() = default;
    explicit ChannelVariant(const Channel& of, std::uint32_t which = 0)
        : channel(of), variant(which) {}

    /// Reads "L", "L_2", "ambi_W".  A missing or unreadable number means variant 0; an Ambisonics
    /// component must be there.  False for an unknown channel or component.
    [[nodiscard]] bool parse(std::string_view text);

    /// By channel id, then by variant.
    bool operator<(const ChannelVariant& other) const {
        if (channel < other.channel) return true;
        if (other.channel < channel) return false;
        return variant < other.variant;
    }
    bool operator==(const ChannelVariant& other) const = default;
};

}  // namespace vela::api
