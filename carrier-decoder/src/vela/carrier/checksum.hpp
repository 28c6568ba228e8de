#pragma once

#include <cstdint>
#include <span>

namespace vela::carrier {

/// CRC-16/GSM of bytes: polynomial 0x1021, start 0, most significant bit first, complemented.
/// Source: the catalogue of parametrised CRC algorithms; its check value ("123456789") is 0xCE3C.
[[nodiscard]] std::uint16_t crc_of_bytes(std::span<const std::uint8_t> bytes);

/// The same over a block: three bytes a sample, the low one first, with line 1 of the first 16
/// samples taken as 0, since the checksum itself stands there.
///
/// Shape: at least 16 samples of 24 bits; what is above bit 23 does not count.
[[nodiscard]] std::uint16_t crc_of_block(std::span<const int> samples);

}  // namespace vela::carrier
