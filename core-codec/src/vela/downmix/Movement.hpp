#pragma once

#include <cstdint>

namespace vela::downmix {

/// Groups of channels that a downmix moves as one.  The metadata file has the names as keywords.
enum class Movement : std::uint32_t {
    Corners,
    CenterSurround,
    Surrounds,
    Fronts,
    Backs,
    Center,
    LeftBack,
    RightBack,
    LeftSurround,
    RightSurround,
    Left,
    Right,
    LFE,
    LFEFronts,
    Trio,
    /// No movement.
    None
};

}  // namespace vela::downmix
