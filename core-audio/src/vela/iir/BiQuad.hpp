#pragma once

#include <array>
#include <cstdint>

namespace vela::iir {

/// A second-order section.
///
///             b0 + b1 z^-1 + b2 z^-2
///     H(z) = ------------------------
///              1 + a1 z^-1 + a2 z^-2
///
/// Each product is made when its input or output is new, and waits in a ring until its turn; the
/// order of the sum is fixed, so that the bits of the answer are.
template <typename T>
class BiQuad {
public:
    BiQuad(T b0, T b1, T b2, T a1, T a2)
        : b0_(b0), b1_(b1), b2_(b2), minus_a1_(-a1), minus_a2_(-a2) {}

    /// One sample in, one out.
    T operator()(T x) {
        const T y = b0_ * x + at_(0) + at_(2) + at_(5) + at_(-1);
        // Where the next call (at position - 4) and the one after it (at position - 8) will look.
        at_(-1) = b2_ * x;
        at_(6) = b1_ * x;
        at_(5) = minus_a2_ * y;
        at_(-4) = minus_a1_ * y;
        position_ -= 4;
        return y;
    }

private:
    T& at_(int step) { return ring_[(position_ + static_cast<std::uint32_t>(step)) % 8]; }

    T b0_, b1_, b2_, minus_a1_, minus_a2_;
    std::array<T, 8> ring_{};
    std::uint32_t position_ = 0;
};

}  // namespace vela::iir
