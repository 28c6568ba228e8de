#pragma once

#include <cstdint>
#include <span>

/// Levels: scaler indices from 1 to 240 divide by 0.1 dB a step, 255 mutes, 0 does nothing.
///
/// Gains are applied in single precision and cut toward zero, as a player does it, so that figures
/// agree to the bit.
namespace vela::carrier {

/// From (24 - b)-bit values back to 24 bits, the group's attenuation taken back.
void restore_level(std::span<int> samples, unsigned nr_bitlines, std::uint32_t group_scaler_ix);

/// What a channel was divided by before it went into the mix, applied to an original.
void attenuate(std::span<int> samples, std::uint32_t attenuation_ix);

/// The inverse, up to rounding; a muted channel stays as it is.
void undo_attenuation(std::span<int> samples, std::uint32_t attenuation_ix);

}  // namespace vela::carrier
