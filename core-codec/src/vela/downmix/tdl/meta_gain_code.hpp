#pragma once

#include <cstdint>

namespace vela::downmix::tdl {

/// The 4-bit code of a linear META gain: steps of 1.5 dB from 0 dB, to the nearest, and 15 for all
/// that is above the last step (from 21.75 dB) or below the first one (-0.75 dB, zero,
/// not-a-number).
///
/// The logarithm is one of single precision: gains at a step's edge depend on it.
[[nodiscard]] std::uint32_t meta_gain_code(float gain);

}  // namespace vela::downmix::tdl
