#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <span>
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
/// arise there from a record.  For N = 4 the entries of the mask vector are, in record order,
///
///     16 x 1, 16 x 2, 16 x 4, 16 x 8,   8 4 2,   8 4 2 1,   8 4 2 1, ...
///     samples 0 to 15                   16       17         18
///
/// The mask vector is the record at the same time: an entry that is cleared is a 0 bit.  It depends
/// on L and N alone, and is built once for each pair and copied from then on.
///
/// Range:   N from 3 to 16; a block below 16 samples has no entries.
/// Threads: objects of one class may be made at once; an object belongs to one thread.
template <typename T, unsigned N>
class Projector {
    static_assert(N >= 3 && N <= 16);

public:
    using SetAndIncrease = mux::SetAndIncrease<T>;

    explicit Projector(std::size_t nr_samples);

    /// Bits that a block can hide.  A count of entries other than this one says that the block is
    /// too short.
    [[nodiscard]] static constexpr std::uint32_t capacity(std::size_t nr_samples) {
        const auto l = static_cast<std::uint32_t>(nr_samples);
        return N * l - ((l - 1) >> 4);
    }

    /// The entries in record order: at first all bits read 1.
    [[nodiscard]] std::span<T> masks() { return masks_; }
    [[nodiscard]] std::span<const T> masks() const { return masks_; }

    /// Sets the bits of the record, all but those of the CRC, in the first L samples.  The low N
    /// bits of the samples must be 0: a bit can only be set here.  False, with nothing set, for a
    /// range that is not valid or shorter than L, or if L is below 16.
    [[nodiscard]] bool project(Range<int*> samples) const;

    /// The same for the sixteen bits of the CRC.
    [[nodiscard]] bool project_crc(Range<int*> samples) const;

private:
    void setup_masks_();
    [[nodiscard]] bool fill_masks_(std::vector<T>& out) const;
    [[nodiscard]] bool fits_(const Range<int*>& samples) const;

    static inline std::mutex mutex_;
    static inline std::map<std::size_t, std::vector<T>> masks_cache_;

    std::size_t nr_samples_;
    std::vector<T> masks_;
};

}  // namespace vela::codec::mux
