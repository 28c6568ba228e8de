#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <vela/codec/v3/lib/encode/Group.hpp>
#include <vela/dither/Pool.hpp>

namespace vela::codec::v3::encode {

/// Brings the active channels down to 24 - b bits: common attenuation against overload, dither,
/// shift.  Also fixes the bits that the record's instructions may take.
///
/// May be called from several threads; the dither pools, one per count of bit-lines, are shared.
class Rescaler {
public:
    /// Fills `rescaled`, `scaler_ix` and `instruction_bits`.  False for b below 3 or when no
    /// attenuation is left to try, which ends the retries of an overflowing mix.
    [[nodiscard]] bool operator()(Group& group);

private:
    std::shared_ptr<const dither::Pool> goc_dither_pool_(unsigned bits);
    bool rescale_(Group& group, float factor);

    std::map<float, std::shared_ptr<const dither::Pool>> pools_;
    std::mutex mutex_;
};

}  // namespace vela::codec::v3::encode
