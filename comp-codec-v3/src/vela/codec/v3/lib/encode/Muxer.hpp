#pragma once

#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode {

/// Turns a winning candidate into its carrier frame: the mix in bits 23 down to b, the record in
/// the b bits below.
class Muxer {
public:
    /// Told to the decoder in every record.
    bool native_content = true;

    /// Fills the record and `frame`.  False if the record cannot say what the group holds, or the
    /// instructions need more than the bits that were set aside for them.
    [[nodiscard]] bool operator()(Group& group) const;

private:
    bool fill_header_(Group& group) const;
    static bool fill_sections_(Group& group);
};

}  // namespace vela::codec::v3::encode
