#pragma once

#include <array>
#include <cstdint>
#include <type_traits>
#include <vela/api/Channel.hpp>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frames.hpp>

namespace vela::api {

/// A flat view of a `Frames`, one pointer per channel id; null where the channel is absent.
///
/// It owns nothing: it is good for as long as the `Frames` lives and is not written to.
template <typename T>
struct AudioBlock {
    std::uint64_t bit_depth = 0;
    /// Samples per channel.
    std::uint64_t frame_size = 0;
    std::array<T*, channel::id::count> channel{};
};

/// Fills `block` with the main signals (variant 0) of `frames`.  False if there is no frame, or
/// sizes or bit depths differ.
template <typename T>
[[nodiscard]] bool convert(AudioBlock<const T>& block, const Frames<T, ChannelVariant>& frames) {
    block.frame_size = 0;
    block.channel.fill(nullptr);
    if (!frames.frame_size(block.frame_size)) return false;
    if (!frames.bit_depth(block.bit_depth)) return false;
    for (const auto& [key, frame] : frames)
        if (key.variant == 0 && key.channel.id() < channel::id::count)
            block.channel[key.channel.id()] = frame.samples().data();
    return true;
}

}  // namespace vela::api
