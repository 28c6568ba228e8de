#pragma once

#include <span>

namespace vela::audio {

/// How far one signal is from another.  Differences wrap at 32 bits.
struct Delta {
    /// Of the differences, as doubles add up, one after the other.
    double sum_of_squares = 0;
    /// The largest magnitude.  The smallest integer has none and never counts.
    int peak = 0;

    /// REQUIRES equal sizes.
    [[nodiscard]] static Delta between(std::span<const int> a, std::span<const int> b);
};

}  // namespace vela::audio
