#pragma once

#include <cstdint>
#include <span>
#include <vela/mix/types.hpp>

namespace vela::mix {

/// Reversible mix of two or three channels into one signal.
///
/// At every t one channel stands at an anchor and goes in rounded; every other channel goes in as
/// its prediction plus the center of the cluster of t.  `unmix` takes the sum apart again with
/// nothing but `seeds`, `ixs` and the centers.
///
/// Shape:   channels, `out` and `ixs` hold N values.  Two channels: N >= 4, two seeds.  Three:
///          N >= 6, five seeds.  REQUIRES every entry of `ixs` to be an index into `centers`.
/// Units:   integers as in the channels; sums wrap at 32 bits, and nobody looks here whether the
///          mix still fits the width that it will be written in.
/// Errors:  false if a size does not fit; `seeds` and `out` are then undefined.
/// `out` must not overlap the channels.
[[nodiscard]] bool mix(std::span<int> seeds, std::span<int> out, std::span<const std::uint64_t> ixs,
                       const Centers1& centers, Samples x, Samples y);
[[nodiscard]] bool mix(std::span<int> seeds, std::span<int> out, std::span<const std::uint64_t> ixs,
                       const Centers2& centers, Samples x0, Samples x1, Samples x2);

}  // namespace vela::mix
