#pragma once

#include <cstdint>

namespace vela::codec::zvk::details {

/// Writes the low `width` bits of `value`, the most significant first; a width above 64 starts
/// with zeros.  False, with nothing written, if fewer bits are left.
template <typename Writer>
[[nodiscard]] bool put(typename Writer::Cursor& at, unsigned& bits_left, std::uint64_t value,
                       unsigned width) {
    if (bits_left < width) return false;
    bits_left -= width;
    for (unsigned bit = width; bit-- > 0;)
        Writer::put(at, bit < 64 && (value >> bit & 1u) != 0);
    return true;
}

}  // namespace vela::codec::zvk::details
