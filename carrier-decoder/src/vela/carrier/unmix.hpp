#pragma once

#include <vector>
#include <vela/carrier/Block.hpp>

namespace vela::carrier {

/// Takes the mix of a block apart.
///
/// Each channel is anchored at every second or third sample; between two anchors it lies on the
/// line through them, up to the center that the sample's index names.  Once the start is known
/// from the seeds, each mix sample holds one unknown, and is solved for it:
///
///     t mod 2      0     1            t mod 3      0     1     2
///     anchored     y0    y1           anchored     y0    y1    y2
///     solved       y1    y0           solved       y2    y0    y1
///                                     known        y1    y2    y0   up to its center
///
/// Shape:  `block.mix`, `ixs` hold N >= 16 samples; as many seeds as the channels in the header
///         ask for; every index below the count of centers.
/// Units:  (24 - b)-bit values in and out, wrapping at 32 bits; one vector a channel, in the order
///         of the header.
[[nodiscard]] std::vector<std::vector<int>> unmix(const Block& block);

}  // namespace vela::carrier
