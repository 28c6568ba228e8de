#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>
#include <vela/numeric/wrap.hpp>

namespace vela::fixed_width {

/// Bits that the largest magnitude among all values needs, without a sign: 0 for no values or
/// zeros alone, 1 for 1, 2 for 2 and 3, 32 for the smallest integer.
template <std::size_t N>
[[nodiscard]] unsigned bit_width(const std::vector<std::array<int, N>>& values) {
    std::uint32_t magnitudes = 0;
    for (const auto& value : values)
        for (const int v : value)
            magnitudes |= static_cast<std::uint32_t>(numeric::wrap_abs(v));
    return static_cast<unsigned>(std::bit_width(magnitudes));
}

}  // namespace vela::fixed_width
