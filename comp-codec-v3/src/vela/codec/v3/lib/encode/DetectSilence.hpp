#pragma once

#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode {

/// Decides which of a candidate's channels go into the mix.
///
/// Silence is measured against the bit-lines: what stays within plus or minus 2^b is drowned by
/// them.  A dropped channel is lost to the decoder and counts in the score as zeros.
class DetectSilence {
public:
    /// Fills `active`, `silence` and the bits of the seeds.  False without channels, or with more
    /// than three to mix.
    [[nodiscard]] bool operator()(Group& group) const;
};

}  // namespace vela::codec::v3::encode
