#pragma once

#include <vela/numeric/wrap.hpp>

/// Rounding of anchors.  It makes the division in a prediction exact, so that whoever has the
/// prediction and one anchor gets the other anchor back to the bit.
namespace vela::mix {

/// The even number next to `x` toward zero: 7 gives 6, -7 gives -6.
[[nodiscard]] constexpr int even(int x) {
    return (x / 2) * 2;
}

/// The nearest multiple of 4, ties toward zero: 2 gives 0, 3 gives 4, -6 gives -4.  The step before
/// the division wraps at both ends of the 32-bit range, as does every sum of the mix.
[[nodiscard]] constexpr int quad(int x) {
    return (numeric::wrap_add(x, x < 0 ? -1 : 1) / 4) * 4;
}

}  // namespace vela::mix
