#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vela::crc {

/// The check value published as CRC-16/GSM: polynomial 0x1021, initial value 0, most significant
/// bit first, complemented at the end.  "123456789" gives 0xCE3C.
///
/// One byte costs one look-up in a table that the compiler makes.
template <typename T>
class CRC16_CCITT {
    static_assert(std::numeric_limits<T>::is_integer && std::numeric_limits<T>::digits == 16);

public:
    constexpr void add(std::uint8_t byte) {
        const auto ix = static_cast<std::uint8_t>(state_ >> 8 ^ byte);
        state_ = static_cast<T>(state_ << 8 ^ lookup_[ix]);
    }

    /// The check value of all that was added so far.
    [[nodiscard]] constexpr T value() const { return static_cast<T>(~state_); }

private:
    static constexpr std::array<T, 256> create_lookup_table_();
    static constexpr std::array<T, 256> lookup_ = create_lookup_table_();

    T state_ = 0;
};

template <typename T>
constexpr std::array<T, 256> CRC16_CCITT<T>::create_lookup_table_() {
    std::array<T, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        auto bits = static_cast<std::uint32_t>(i << 8);
        for (int k = 0; k < 8; ++k)
            bits = bits << 1 ^ (bits & 0x8000u ? 0x1021u : 0u);
        table[i] = static_cast<T>(bits);
    }
    return table;
}

}  // namespace vela::crc
