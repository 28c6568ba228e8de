#pragma once

#include <cstdint>
#include <mutex>
#include <vector>
#include <vela/Range.hpp>
#include <vela/permutation/MersenneTwister.hpp>

namespace vela::dither {

/// Triangular noise for requantising, drawn once and used many times.
///
/// A table of noise is made at construction; each frame enters it at an offset of its own, so that
/// a frame costs one random draw and not two per sample.  The generator is seeded with the clock:
/// no two runs dither alike.
///
///     table    n0 n1 n2 n3 n4 n5 n6 n7 ...          n = mean + U - V,  U, V uniform in 0..2^bits
///     frame          x0 x1 x2 x3                    entered at 2
///
/// Any number of threads may use one pool; only the draw of the offset takes a lock.
class Pool {
public:
    /// `bits`: the noise reaches 2^bits either way, below 31.  `mean`: its center.  `width`: bits
    /// of the samples that are dithered, 1 to 32.  `size`: entries of the table; more than two
    /// beyond the longest frame, or frames have no offsets to choose from.
    Pool(unsigned bits, int mean, unsigned long width, unsigned long size);

    /// Adds noise to each sample; what would leave `width` bits stays at full scale.
    ///
    /// `offset`: place of the samples in their stream; it counts only modulo the stride of the
    /// table, which is 1.  False, with nothing changed, for more samples than the table has.
    [[nodiscard]] bool operator()(Range<int*> samples, unsigned long offset) const;

private:
    void generate_pool_(unsigned bits);
    std::uint32_t generate_offset_in_rnds_(unsigned long count, unsigned long offset) const;

    mutable permutation::MersenneTwister rng_;
    /// Guards `rng_`.  All else is only read once the table is made.
    mutable std::mutex mutex_;
    int mean_;
    std::vector<int> rnds_;
    unsigned stride_ = 1;
    int max_;
    int min_;
};

}  // namespace vela::dither
