#pragma once

#include <vector>

namespace vela::filter::lowpass::fir {

/// The taps of the design for that frequency and rate in Hz, or null if there is none.
///
/// All filters share them: read only, good until the process ends.
[[nodiscard]] const std::vector<double>* get_coefs(unsigned freq, unsigned sample_rate);

}  // namespace vela::filter::lowpass::fir
