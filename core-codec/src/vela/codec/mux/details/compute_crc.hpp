#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vela/crc/CRC16_CCITT.hpp>

namespace vela::codec::mux::details {

/// Three bytes of each of `count` samples, of which only the bits of `mask` count.
template <std::size_t count, typename Iterator>
std::array<std::uint8_t, 3 * count> bytes_of(Iterator samples, std::uint32_t mask = ~0u) {
    std::array<std::uint8_t, 3 * count> bytes;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t sample = static_cast<std::uint32_t>(samples[i]) & mask;
        for (std::size_t k = 0; k < 3; ++k)
            bytes[3 * i + k] = static_cast<std::uint8_t>(sample >> 8 * k);
    }
    return bytes;
}

/// The check value of a block: CRC-16/GSM over the low three bytes of each sample, least
/// significant byte first, audio and record alike.
///
/// Line 1 of the first sixteen samples, where the CRC itself stands, counts as 0: the value is the
/// same before and after it is written.  The sign extension above bit 23 is not fed.
///
/// `samples` is a `Range` over 32-bit samples.  False, with `crc` untouched, if it is not valid or
/// has fewer than 16 samples, or for a sample width other than 24 bits.
template <typename Value, typename Samples>
[[nodiscard]] bool compute_crc(unsigned sample_width, Value& crc, const Samples& samples) {
    constexpr std::size_t nr_crc_bits = 16;
    constexpr std::uint32_t without_line_1 = 0xFFFFFFFDu;
    if (sample_width != 24 || !samples.valid() || samples.size() < nr_crc_bits) return false;

    vela::crc::CRC16_CCITT<unsigned short> sum;
    const auto first = samples.begin();
    std::size_t at = 0;
    for (; at < nr_crc_bits; at += 4)
        sum.add(bytes_of<4>(first + at, without_line_1));
    for (; samples.size() - at >= 4; at += 4)
        sum.add(bytes_of<4>(first + at));
    for (; at < samples.size(); ++at)
        sum.add(bytes_of<1>(first + at));
    crc = sum.value();
    return true;
}

}  // namespace vela::codec::mux::details
