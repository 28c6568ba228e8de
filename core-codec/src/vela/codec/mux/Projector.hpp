#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>
#include <vela/Range.hpp>
#include <vela/codec/mux/SetAndIncrease.hpp>

namespace vela::codec::mux {

/// Where the bits of a record stand in the N low bits, the bit-lines, of a block of L samples.
///
///     record bits          samples    lines, in order
///      0 .. 15  sync       0 .. 15    0
///     16 .. 31  CRC        0 .. 15    1
///     32 .. 47             0 .. 15    2
///     48 .. 16 N - 1       0 .. 15    N-1 down to 3, sample by sample   (N > 3)
///     16 N ..              16 .. L-1  N-1 down to 0, sample by sample;
///                                     down to 1 where 16 divides the sample
///
/// Line 0 of the samples 16, 32, 48 .. stays 0: no run of sixteen ones, which is the sync word, can
/// arise there from a record.  For N = 4 the record bits 64 .. stand in these lines:
///
///     sample   16        17          18          ...   32
///     lines    3 2 1     3 2 1 0     3 2 1 0     ...   3 2 1
///
/// Holds what stands behind the CRC, the body of the record, in words of T.
///
/// Range:   N from 3 to 16; a block below 16 samples holds no record, nor does one with more bits
///          than 32 bits can count.
/// Threads: an object belongs to one thread.
template <typename T, unsigned N>
class Projector {
    static_assert(N >= 3 && N <= 16);

public:
    using SetAndIncrease = mux::SetAndIncrease<T>;

    explicit Projector(std::size_t nr_samples);

    /// Bits that a block can hide, counted in 32 bits.
    [[nodiscard]] static constexpr std::uint32_t capacity(std::size_t nr_samples) {
        const auto l = static_cast<std::uint32_t>(nr_samples);
        return N * l - ((l - 1) >> 4);
    }

    /// Bits of the body; none says that the block is too short for a sync word, or too long.
    [[nodiscard]] std::uint32_t body_bits() const;

    /// Where they are written.  They are 0 at first.
    [[nodiscard]] typename SetAndIncrease::Cursor body() { return {words_.data()}; }

    /// Sets the sync word and the bits of the body in the first L samples.  The low N
    /// bits of the samples must be 0: a bit can only be set here.  False, with nothing set, for a
    /// range that is not valid or shorter than L, or if the block holds no record.
    [[nodiscard]] bool project(Range<int*> samples) const;

    /// The same for the CRC.
    [[nodiscard]] bool project_crc(Range<int*> samples, std::uint16_t crc) const;

private:
    [[nodiscard]] bool fits_(const Range<int*>& samples) const;

    std::size_t nr_samples_;
    std::vector<T> words_;
};

}  // namespace vela::codec::mux
