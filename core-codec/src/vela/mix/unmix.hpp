#pragma once

#include <cstdint>
#include <span>
#include <vela/mix/types.hpp>

namespace vela::mix {

/// Takes a mix apart, as a decoder does.
///
/// Anchors come back exactly as `mix` rounded them, raw samples as they were, and every other
/// sample as its prediction plus the center of its cluster: wrong by center less residual.
/// Sums that wrapped in `mix` wrap back here.
///
/// Shape:   rebuilt channels, `m` and `ixs` hold N values.  Two channels: N >= 3, two seeds.
///          Three: N >= 5, five seeds.  REQUIRES every entry of `ixs` to be an index into
///          `centers`.
/// Units:   as in the channels that were mixed.
/// Errors:  false if a size does not fit; the rebuilt channels are then undefined.
/// The rebuilt channels must not overlap each other or `m`.
[[nodiscard]] bool unmix(std::span<int> y0, std::span<int> y1, std::span<const int> seeds,
                         std::span<const int> m, std::span<const std::uint64_t> ixs,
                         const Centers1& centers);
[[nodiscard]] bool unmix(std::span<int> y0, std::span<int> y1, std::span<int> y2,
                         std::span<const int> seeds, std::span<const int> m,
                         std::span<const std::uint64_t> ixs, const Centers2& centers);

}  // namespace vela::mix
