#pragma once

#include <array>

/// Gains as one byte.
///
/// Every gain in the codec is an index into one table of 0.1 dB steps, because an index is what the
/// record carries: encoder and decoder read the same entry and get the same bits.
///
///     index    0    60   120   180   240   255
///     gain     1     2     4     8    16   infinity (a division by it silences)
namespace vela::limiter {

inline constexpr unsigned scaler_count = 241;
/// Index that silences a channel instead of scaling it.
inline constexpr unsigned char silencing_ix = 255;

/// The gains of indices 0 to 240, rising.
extern const std::array<double, scaler_count> dBScale;

/// Finds the smallest gain of the table that is not below `value`.
///
/// `scaler` is that gain in single precision, `ix` its index.  False, with both untouched, unless
/// `value` lies in [1, 16].
[[nodiscard]] bool scaler_to_ix(unsigned char& ix, float& scaler, float value);

/// The gain of an index, in single precision; infinity for `silencing_ix`.
///
/// False, with `scaler` untouched, for 241 to 254.
[[nodiscard]] bool ix_to_scaler(float& scaler, unsigned char ix);

}  // namespace vela::limiter
