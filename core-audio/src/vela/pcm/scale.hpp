#pragma once

#include <vela/audio/Frame.hpp>

/// Gains in single precision: 24 significant bits are part of the result, since a decoder that
/// undoes a gain computes in the same precision.
namespace vela::pcm {

/// Multiplies each sample by `f`, cut toward zero.
///
/// A product outside 32 bits becomes the smallest integer.  `f` = 1 leaves the samples shared.
[[nodiscard]] bool multiply_by(float f, audio::Frame& frame);

/// Divides each sample by `f`, cut toward zero.  Infinity silences the frame.
///
/// `f` = 1 leaves the samples shared.  False, with nothing changed, for `f` = 0.
[[nodiscard]] bool divide_by(float f, audio::Frame& frame);

}  // namespace vela::pcm
