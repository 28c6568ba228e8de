#pragma once

#include <cstdint>
#include <limits>

namespace vela::numeric {

/// Cuts a real to a 32-bit integer, toward zero.
///
/// What no 32-bit integer can hold, not-a-number included, gives the smallest one: the answer that
/// x86 conversions give, here on every machine and without undefined behaviour.
[[nodiscard]] constexpr std::int32_t truncate_to_int32(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) return static_cast<std::int32_t>(value);
    return std::numeric_limits<std::int32_t>::min();
}

}  // namespace vela::numeric
