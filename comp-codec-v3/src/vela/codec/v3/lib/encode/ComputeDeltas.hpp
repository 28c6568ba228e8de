#pragma once

#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode {

/// Computes what the decoder's prediction of the samples between anchors misses.
class ComputeDeltas {
public:
    /// Fills `deltas` from `rescaled`.  False for other than one to three channels, or a frame too
    /// short to predict in.
    [[nodiscard]] bool operator()(Group& group) const;
};

}  // namespace vela::codec::v3::encode
