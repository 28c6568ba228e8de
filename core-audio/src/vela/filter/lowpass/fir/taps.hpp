#pragma once

#include <cstddef>
#include <span>
#include <vela/filter/lowpass/find_design.hpp>

namespace vela::filter::lowpass::fir {

/// A symmetric row of taps, stored as its first half: tap[nr_taps - 1 - i] == tap[i].
struct HalfTaps {
    std::size_t nr_taps;
    /// The first (nr_taps + 1) / 2 taps.
    std::span<const double> half;
};

[[nodiscard]] HalfTaps half_taps(Design design);

}  // namespace vela::filter::lowpass::fir
