#pragma once

#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode {

/// Adds the channels into one signal of 24 - b bits, with the chosen centers in place of the
/// deltas.
class Mixer {
public:
    /// Fills `mixed`, `mix_seeds` and `overflow`.  An overflow is no failure: the caller attenuates
    /// and tries again.
    [[nodiscard]] bool operator()(Group& group) const;
};

}  // namespace vela::codec::v3::encode
