#pragma once

#include <cstddef>
#include <cstdint>
#include <vela/bnb/Traits.hpp>

namespace vela::bnb::details {

/// Puts the low bytes of `value` at `to`, as many as `Tag` is wide, least significant first.  A
/// negative number goes out as the low bytes of its two's complement, whichever sign the tag has.
template <typename Tag>
void put_bytes(char* to, std::uint64_t value, Tag, LittleEndian_tag) {
    for (std::size_t i = 0; i < Traits<Tag>::width; ++i)
        to[i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

/// The number in the bytes at `from`, as many as `Tag` is wide, least significant first; signed
/// formats are sign-extended, nothing is scaled.
template <typename Tag>
[[nodiscard]] std::int64_t get_bytes(const char* from, Tag, LittleEndian_tag) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < Traits<Tag>::width; ++i)
        bits |= std::uint64_t{static_cast<unsigned char>(from[i])} << (8 * i);
    if constexpr (Traits<Tag>::is_signed) {
        constexpr auto sign = std::uint64_t{1} << (8 * Traits<Tag>::width - 1);
        return static_cast<std::int64_t>((bits ^ sign) - sign);
    } else {
        return static_cast<std::int64_t>(bits);
    }
}

}  // namespace vela::bnb::details
