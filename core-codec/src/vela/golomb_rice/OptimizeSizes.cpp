#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::golomb_rice {

namespace {

/// Bits for all k at once.  An index i takes k + 1 bits and one for each multiple of 2^k from 1 to
/// i: summed over all indices, each multiple counts all samples from it on.
class Totals {
public:
    explicit Totals(std::span<const unsigned> sizes) {
        for (std::size_t i = sizes.size(); i-- > 1;) {
            nr_samples_ += sizes[i];
            if (i % 2 != 0)  // every other time: not through memory
                from_odd_ += nr_samples_;
            else
                from_even_[static_cast<unsigned>(std::countr_zero(i))] += nr_samples_;
        }
        if (!sizes.empty()) nr_samples_ += sizes[0];
    }

    [[nodiscard]] std::uint64_t of(unsigned k) const {
        const auto first = from_even_.begin() + std::min<unsigned>(k, 32);
        return std::accumulate(first, from_even_.end(),
                               nr_samples_ * (k + 1) + (k == 0 ? from_odd_ : 0));
    }

private:
    std::uint64_t nr_samples_ = 0;
    std::uint64_t from_odd_ = 0;
    std::array<std::uint64_t, 32> from_even_{};  // by the power of 2 that divides the multiple
};

}  // namespace

bool OptimizeSizes::operator()(unsigned& k, std::uint32_t& total,
                               std::span<const unsigned> sizes) const {
    constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
    const Totals totals(sizes);
    std::uint32_t best = none;
    for (unsigned candidate = min_; candidate <= max_; ++candidate) {
        const std::uint64_t bits = totals.of(candidate);
        if (bits >= best) continue;
        best = static_cast<std::uint32_t>(bits);
        k = candidate;
    }
    if (best == none) return false;
    total = best;
    return true;
}

}  // namespace vela::golomb_rice
