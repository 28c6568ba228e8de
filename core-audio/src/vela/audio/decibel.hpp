#pragma once

#include <vela/audio/Delta.hpp>

namespace vela::audio {

/// Stands for a level of nothing, which has no logarithm.
inline constexpr double silence_db = -3000.0;

/// 20 log10 of a level; `silence_db` for 1e-150 and below, not-a-number included.
[[nodiscard]] double linear_to_db(double linear);

/// 10^(dB / 20); 0 for `silence_db` and below.
[[nodiscard]] double db_to_linear(double dB);

/// Largest difference between two signals, in dB of `full_scale`, but not below `floor_db`.
[[nodiscard]] double dB_delta_peak_container(const Delta& delta, int full_scale, double floor_db);

}  // namespace vela::audio
