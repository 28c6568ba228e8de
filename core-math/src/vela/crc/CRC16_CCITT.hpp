#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vela::crc {

/// The check value published as CRC-16/GSM: polynomial 0x1021, initial value 0, most significant
/// bit first, complemented at the end.  "123456789" gives 0xCE3C.
///
/// One byte costs one look-up in a table that the compiler makes.  Of several bytes at once only
/// the first two look-ups wait for the state: twelve take little longer than one.
template <typename T>
class CRC16_CCITT {
    static_assert(std::numeric_limits<T>::is_integer && std::numeric_limits<T>::digits == 16);

public:
    static constexpr std::size_t most_at_once = 12;

    constexpr void add(std::uint8_t byte) {
        const auto ix = static_cast<std::uint8_t>(state_ >> 8 ^ byte);
        state_ = static_cast<T>(state_ << 8 ^ lookup_[0][ix]);
    }

    /// The same as one after the other.
    template <std::size_t N>
    constexpr void add(const std::array<std::uint8_t, N>& bytes) {
        static_assert(N >= 2 && N <= most_at_once);
        const auto ix = static_cast<std::uint8_t>(state_ >> 8 ^ bytes[0]);
        const auto next_ix = static_cast<std::uint8_t>(state_ ^ bytes[1]);
        T sum = lookup_[N - 1][ix] ^ lookup_[N - 2][next_ix];
        for (std::size_t i = 2; i < N; ++i)
            sum ^= lookup_[N - 1 - i][bytes[i]];
        state_ = sum;
    }

    /// The check value of all that was added so far.
    [[nodiscard]] constexpr T value() const { return static_cast<T>(~state_); }

private:
    /// What a byte makes of an empty state, with 0, 1, 2, ... zero bytes behind it.
    using Lookup = std::array<std::array<T, 256>, most_at_once>;

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
