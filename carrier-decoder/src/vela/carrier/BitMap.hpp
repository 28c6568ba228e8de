#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Where the bits of the hidden record lie in a block of L samples with b bit-lines.
///
/// Line 0 is the lowest bit of a sample.  Record bits 0 to 15 lie on line 0 of samples 0 to 15,
/// bits 16 to 31 on line 1, bits 32 to 47 on line 2; then follow the lines above 2 of these
/// samples, sample by sample from the top line down.  From sample 16 on each sample holds b bits,
/// from the top line down, but samples 16, 32, 48, ... stop at line 1.
///
/// Units: L >= 16, 3 <= b <= 16.
namespace vela::carrier {

struct BitPlace {
    std::size_t sample;
    unsigned line;

    bool operator==(const BitPlace&) const = default;
};

/// b L bits, less one for each of the samples 16, 32, 48, ...
[[nodiscard]] std::size_t nr_record_bits(std::size_t nr_samples, unsigned nr_bitlines);

/// Place of one bit of the record.
[[nodiscard]] BitPlace place_of(std::size_t record_bit, unsigned nr_bitlines);

/// All bits of the record, in its order.
[[nodiscard]] std::vector<bool> read_record(std::span<const int> samples, unsigned nr_bitlines);

}  // namespace vela::carrier
