#pragma once

namespace vela::limiter {

/// What an analysis found.
enum class ReturnCode {
    nothing = 0,         ///< The sum stays at or below the threshold.
    out_of_range = 1,    ///< It needs more attenuation than the table of gains has.
    lengths_differ = 3,  ///< The frames are not of one length.
    scaled = 4           ///< The gain that is needed was found.
};

}  // namespace vela::limiter
