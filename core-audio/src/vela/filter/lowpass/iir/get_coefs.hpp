#pragma once

#include <vector>
#include <vela/filter/lowpass/iir/Coef.hpp>

namespace vela::filter::lowpass::iir {

/// The sections of the design for that frequency and rate in Hz, or null if there is none.
///
/// All filters share them: read only, good until the process ends.
[[nodiscard]] const std::vector<Coef>* get_coefs(unsigned freq, unsigned sample_rate);

}  // namespace vela::filter::lowpass::iir
