#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <vela/bnb/details/bytes.hpp>
#include <vela/numeric/wrap.hpp>

/// Many numbers at once, for the sake of speed: three bytes are no width of a machine.
namespace vela::bnb::details {

/// Numbers in one turn of a loop, so that compilers load them one by one but go on with all.
inline constexpr std::size_t at_once = 4;

/// Numbers of three bytes, each loaded together with the byte behind it.  Returns how many were
/// got: those behind which there surely is one.
inline std::size_t get_with_next_byte(std::span<std::int32_t> to, const char* from,
                                      std::size_t stride) {
    std::size_t i = 0;
    for (; i + at_once < to.size(); i += at_once) {
        std::array<std::uint32_t, at_once> words;
        for (std::size_t k = 0; k < at_once; ++k)
            std::memcpy(&words[k], from + (i + k) * stride, sizeof words[k]);
        for (std::size_t k = 0; k < at_once; ++k)
            to[i + k] = numeric::wrap(words[k] << 8) >> 8;
    }
    return i;
}

/// Fills `to` with the numbers at `from`, which lie `stride` bytes apart, at least the width of
/// `Tag`.  No byte behind the last one is read.
template <typename Tag>
void get_numbers(std::span<std::int32_t> to, const char* from, std::size_t stride, Tag tag,
                 LittleEndian_tag order) {
    std::size_t i = 0;
    if constexpr (std::is_same_v<Tag, Int24_tag> && std::endian::native == std::endian::little)
        i = get_with_next_byte(to, from, stride);
    for (; i < to.size(); ++i)
        to[i] = static_cast<std::int32_t>(get_bytes(from + i * stride, tag, order));
}

/// Puts the low bytes of all numbers at `to`, side by side.
template <typename Tag>
void put_numbers(char* to, std::span<const std::int32_t> numbers, Tag tag, LittleEndian_tag order) {
    constexpr std::size_t width = Traits<Tag>::width;
    std::size_t i = 0;
    // A fourth byte, which the number behind it puts right.
    if constexpr (width == 3)
        for (; i + at_once < numbers.size(); i += at_once)
            for (std::size_t k = i; k < i + at_once; ++k)
                put_bytes(to + width * k, static_cast<std::uint64_t>(numbers[k]), UInt32_tag(),
                          order);
    for (; i < numbers.size(); ++i)
        put_bytes(to + width * i, static_cast<std::uint64_t>(numbers[i]), tag, order);
}

}  // namespace vela::bnb::details
