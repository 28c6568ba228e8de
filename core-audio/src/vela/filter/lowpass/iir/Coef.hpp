#pragma once

namespace vela::filter::lowpass::iir {

/// One second-order section, (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2), and the gain
/// behind it.
struct Coef {
    double b0, b1, b2, a1, a2, gain;

    bool operator==(const Coef&) const = default;
};

}  // namespace vela::filter::lowpass::iir
