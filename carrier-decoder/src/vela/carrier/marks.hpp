#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The marks by which a block is known: 16 bits each, on the lowest lines of its first 16 samples.
///
///     line 0    sync word, all ones
///     line 1    checksum
///     line 2    first 16 bits of the header, whatever the count of bit-lines
namespace vela::carrier {

inline constexpr std::size_t nr_marked_samples = 16;

/// The bits on one line, the first sample's on top.  Shape: at least 16 samples.
[[nodiscard]] std::uint32_t word_on_line(std::span<const int> samples, unsigned line);

[[nodiscard]] bool has_sync_word(std::span<const int> samples);

/// Whether the checksum that is written is that of the block.
[[nodiscard]] bool has_checksum(std::span<const int> samples);

}  // namespace vela::carrier
