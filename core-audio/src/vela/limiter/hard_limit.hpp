#pragma once

#include <vela/audio/Frame.hpp>

namespace vela::limiter {

/// Clamps each sample to what a signed integer of that many bits holds.
///
/// 0 bits silences the frame; 32 bits leaves it as it is.  False, with nothing changed, for more.
/// A frame whose samples all fit goes on sharing them.
[[nodiscard]] bool hard_limit(audio::Frame& frame, unsigned bits);

}  // namespace vela::limiter
