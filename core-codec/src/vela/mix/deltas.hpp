#pragma once

#include <span>
#include <vela/mix/types.hpp>

namespace vela::mix {

/// Residuals of a mix: by how much each sample that is not an anchor misses its prediction.
///
/// They are what a decoder would have to know to rebuild the channels without error; clustering
/// replaces each by the center of its cluster.  mix2.hpp and mix3.hpp draw who is predicted when.
///
/// Shape:   all channels hold N samples.  Two channels: N >= 4, `d` holds N values, the first and
///          the last of them 0.  Three: N >= 6, `d` holds N pairs, `d[2t]` and `d[2t + 1]`.
/// Units:   integers as in the channels; sums wrap at 32 bits.
/// Errors:  false if a size does not fit; `d` is then undefined.
/// `d` must not overlap the channels.
[[nodiscard]] bool deltas(std::span<int> d, Samples x, Samples y);
[[nodiscard]] bool deltas(std::span<int> d, Samples x0, Samples x1, Samples x2);

}  // namespace vela::mix
