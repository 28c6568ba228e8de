#pragma once

#include <cstddef>
#include <cstdint>
#include <vela/bnb/Tags.hpp>

namespace vela::bnb {

namespace details {

template <std::size_t Width>
struct Signed {
    /// Bytes of one number.
    static constexpr std::size_t width = Width;
    static constexpr bool is_signed = true;
    /// The smallest and the largest number that fit: -8388608 and 8388607 in three bytes.
    static constexpr std::int64_t MinNeg = -(std::int64_t{1} << (8 * Width - 1));
    static constexpr std::int64_t MaxPos = (std::int64_t{1} << (8 * Width - 1)) - 1;
};

template <std::size_t Width>
struct Unsigned {
    static constexpr std::size_t width = Width;
    static constexpr bool is_signed = false;
};

}  // namespace details

/// Width and sign of a format, and the limits of the signed ones.
template <typename Format>
struct Traits;

template <>
struct Traits<Int8_tag> : details::Signed<1> {};
template <>
struct Traits<Int16_tag> : details::Signed<2> {};
template <>
struct Traits<Int24_tag> : details::Signed<3> {};
template <>
struct Traits<Int32_tag> : details::Signed<4> {};
template <>
struct Traits<UInt16_tag> : details::Unsigned<2> {};
template <>
struct Traits<UInt24_tag> : details::Unsigned<3> {};
template <>
struct Traits<UInt32_tag> : details::Unsigned<4> {};

}  // namespace vela::bnb
