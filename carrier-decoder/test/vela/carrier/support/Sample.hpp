#pragma once

#include "Mixer.hpp"
#include "Writer.hpp"

/// Blocks to decode, with what must come out.
namespace vela::carrier::support {

/// One block before it is put into samples, so that a test can spoil a field first.
struct Sample {
    unsigned nr_bitlines = 0;
    Record record;
    Mixed mixed;

    [[nodiscard]] std::vector<int> samples() const {
        return put(record.bits(), mixed.mix, nr_bitlines);
    }
};

/// A sound block of noise with five centers, one of them the largest that its width can hold, and
/// the instruction of the input layout.
///
/// Shape: 1 to 3 channels of ids 2, 3, 4, `length` samples; bit-lines that hold it all.
[[nodiscard]] Sample make_sample(std::size_t nr_channels, std::size_t length, unsigned nr_bitlines,
                                 unsigned seed = 1);

}  // namespace vela::carrier::support
