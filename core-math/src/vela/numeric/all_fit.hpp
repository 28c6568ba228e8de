#pragma once

#include <cstdint>
#include <span>

namespace vela::numeric {

/// Whether a signed integer of that many bits, 1 to 32, holds each of the numbers.
[[nodiscard]] inline bool all_fit(std::span<const std::int32_t> numbers, unsigned nr_bits) {
    // All are looked at, since loops that may end early are not vectorised.
    std::int32_t bits = 0;  // that are not as the sign
    for (const std::int32_t number : numbers)
        bits |= number ^ number >> 31;
    return bits >> (nr_bits - 1) == 0;
}

}  // namespace vela::numeric
