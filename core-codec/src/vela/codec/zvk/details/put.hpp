#pragma once

#include <cstdint>

namespace vela::codec::zvk::details {

/// Writes the low `width` bits of `value`, at most 32, the most significant first.  False, with
/// nothing written, if fewer bits are left.
template <typename Writer>
[[nodiscard]] bool put(typename Writer::Cursor& at, unsigned& bits_left, std::uint32_t value,
                       unsigned width) {
    if (bits_left < width) return false;
    bits_left -= width;
    const auto mask = static_cast<std::uint32_t>((std::uint64_t{1} << width) - 1);
    Writer::put(at, value & mask, width);
    return true;
}

/// Writes `bit` `count` times.  False, with nothing written, if fewer bits are left.
template <typename Writer>
[[nodiscard]] bool put_run(typename Writer::Cursor& at, unsigned& bits_left, bool bit,
                           std::uint64_t count) {
    constexpr unsigned piece = 32;
    const std::uint32_t value = bit ? ~std::uint32_t{0} : 0;
    if (bits_left < count) return false;
    for (; count > piece; count -= piece)
        if (!put<Writer>(at, bits_left, value, piece)) return false;
    return put<Writer>(at, bits_left, value, static_cast<unsigned>(count));
}

}  // namespace vela::codec::zvk::details
