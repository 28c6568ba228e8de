#pragma once

#include <vela/limiter/scaler.hpp>

namespace vela::limiter {

/// Finds gains in the table that the record's one-byte indices point into.
struct LinearScaler {
    /// The smallest gain of the table that is not below `ratio`.  False, with the outputs
    /// untouched, if `ratio` lies outside [1, 16].
    [[nodiscard]] static bool find(unsigned char& ix, float& scaler, double ratio) {
        return scaler_to_ix(ix, scaler, static_cast<float>(ratio));
    }
};

}  // namespace vela::limiter
