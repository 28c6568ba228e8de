#pragma once

#include <cstddef>
#include <optional>

namespace vela::filter::lowpass {

/// The designs that exist, each by the sample rate and the cut-off frequency it was made for.
enum class Design : std::size_t {
    Rate88200Freq36000,
    Rate88200Freq38000,
    Rate88200Freq40000,
    Rate96000Freq36000,
    Rate96000Freq38000,
    Rate96000Freq40000
};

inline constexpr std::size_t design_count = 6;

/// The design that cuts off at `freq` Hz.
///
/// Other rates use a design at its own ratio of frequency to rate.  Nothing for a pair of frequency
/// and rate that no design fits: filters are not designed at run time.
[[nodiscard]] std::optional<Design> find_design(unsigned freq, unsigned sample_rate);

}  // namespace vela::filter::lowpass
