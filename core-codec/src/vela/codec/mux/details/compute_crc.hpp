#pragma once

#include <cstddef>
#include <cstdint>
#include <vela/crc/CRC16_CCITT.hpp>

namespace vela::codec::mux::details {

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
    const auto feed = [&sum](std::uint32_t sample) {
        sum.add(static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8),
                static_cast<std::uint8_t>(sample >> 16));
    };
    const auto first = samples.begin();
    for (std::size_t i = 0; i < nr_crc_bits; ++i)
        feed(static_cast<std::uint32_t>(first[i]) & without_line_1);
    for (std::size_t i = nr_crc_bits; i < samples.size(); ++i)
        feed(static_cast<std::uint32_t>(first[i]));
    crc = sum.value();
    return true;
}

}  // namespace vela::codec::mux::details
