#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// A plain writer of blocks, for tests of the reader: slow, without checks, and with every field
/// open to be set wrong.  It shares no code with the reader.
namespace vela::carrier::support {

using Bits = std::vector<bool>;

/// Appends `width` bits of `value`, most significant first.
void append(Bits& bits, std::uint64_t value, unsigned width);

/// What is written; the sections stand in this order.
struct Record {
    std::uint32_t sync = 0xFFFF;
    std::uint32_t frame_size_code = 0;
    std::uint32_t reserved_flags = 0;
    std::uint32_t encoded = 1;
    std::uint32_t native_content = 1;
    std::uint32_t mix_bw_code = 0;
    std::uint32_t version_major = 1;
    std::uint32_t version_minor = 10;
    std::uint32_t dither = 0;
    std::uint32_t ix_coding = 0;
    std::uint32_t rice_k = 0;
    std::uint32_t error_center_ix = 0;
    std::uint32_t nr_instruction_lists = 1;
    std::uint32_t center_bits = 0;
    std::array<std::uint32_t, 4> channels{255, 255, 255, 255};
    std::uint32_t reserved = 0;
    std::vector<int> seeds;  ///< in the order of their numbers
    Bits instructions;       ///< tag and closing opcode included
    std::vector<std::array<int, 2>> centers;
    unsigned dimensions = 0;  ///< of a center
    std::uint32_t nr_slots = 8;
    std::vector<std::uint32_t> ixs;

    /// All bits; the checksum's are left 0.
    [[nodiscard]] Bits bits() const;
};

/// Puts record bits and padding into the low `nr_bitlines` bits of `mix`, then the checksum.
[[nodiscard]] std::vector<int> put(const Bits& record, const std::vector<int>& mix,
                                   unsigned nr_bitlines);

/// Writes the checksum of a block anew.
void seal(std::vector<int>& samples);

/// Sample and line by record bit: the table of the format, walked from its start.
[[nodiscard]] std::vector<std::array<std::size_t, 2>> places(std::size_t nr_samples,
                                                             unsigned nr_bitlines);

}  // namespace vela::carrier::support
