#pragma once

#include <vela/Range.hpp>
#include <vela/audio/Frame.hpp>

namespace vela::pcm {

/// Widest shift: a whole 24-bit sample.
inline constexpr unsigned max_shift = 24;

/// Multiplies each sample by 2^n; what leaves the 32 bits is lost.
///
/// The samples become private to `frame` also for n = 0.  False, with nothing changed, for n above
/// `max_shift`.
[[nodiscard]] bool shift_left(unsigned n, audio::Frame& frame);

/// Divides each sample by 2^n, rounding down: the sign stays.
///
/// False, with nothing changed, for n above `max_shift`.
[[nodiscard]] bool shift_right(unsigned n, Range<int*> samples);

}  // namespace vela::pcm
