#pragma once

#include <cstdint>

/// 32-bit arithmetic that wraps as two's complement, for sums whose bits a decoder undoes in the
/// same way.
namespace vela::numeric {

[[nodiscard]] constexpr std::int32_t wrap(std::uint32_t bits) {
    return static_cast<std::int32_t>(bits);
}

[[nodiscard]] constexpr std::int32_t wrap_add(std::int32_t a, std::int32_t b) {
    return wrap(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

[[nodiscard]] constexpr std::int32_t wrap_sub(std::int32_t a, std::int32_t b) {
    return wrap(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

[[nodiscard]] constexpr std::int32_t wrap_mul(std::int32_t a, std::int32_t b) {
    return wrap(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

/// Magnitude; the smallest integer, which has none, keeps its bits.
[[nodiscard]] constexpr std::int32_t wrap_abs(std::int32_t a) {
    return a < 0 ? wrap_sub(0, a) : a;
}

}  // namespace vela::numeric
