#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vela::golomb_rice {

/// Chooses the Rice parameter with which the indices of clusters take the fewest bits.
///
/// Index i costs k + 1 + i / 2^k bits: its k low bits, a terminating bit, and the rest in unary.
class OptimizeSizes {
public:
    /// Parameters that may be chosen, both ends included.  REQUIRES min <= max < 32.
    OptimizeSizes(unsigned min, unsigned max) : min_(min), max_(max) {}

    /// Takes how often each index occurs, by index, and gives the parameter and the bits of all
    /// indices together.  Of equal totals the lowest parameter wins; no sizes cost 0 bits.
    ///
    /// False, with the outputs untouched, if no total is below 2^32 - 1.
    [[nodiscard]] bool operator()(unsigned& k, std::uint32_t& total,
                                  std::span<const unsigned> sizes) const;

    /// Bits that all indices take at least once up to `nr_merges` pairs of clusters were merged,
    /// one after the other, and the clusters numbered by size again; `sizes` go from the largest
    /// down.
    [[nodiscard]] std::uint32_t floor_after_merges(std::span<const unsigned> sizes,
                                                   std::size_t nr_merges) const;

private:
    unsigned min_;
    unsigned max_;
};

}  // namespace vela::golomb_rice
