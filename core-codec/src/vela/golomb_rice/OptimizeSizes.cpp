#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::golomb_rice {

namespace {

/// Bits for each k in turn.  An index i takes k + 1 bits and one for each multiple of 2^k from 1 to
/// i: summed over all indices, each multiple counts all samples from it on.
class Totals {
public:
    Totals(std::span<const unsigned> sizes, unsigned k) : k_(k) {
        std::uint64_t from_odd = 0;
        for (std::size_t i = sizes.size(); i-- > 1;) {
            nr_samples_ += sizes[i];
            if (i % 2 != 0)  // every other time: not through memory
                from_odd += nr_samples_;
            else
                from_[static_cast<unsigned>(std::countr_zero(i))] += nr_samples_;
        }
        if (!sizes.empty()) nr_samples_ += sizes[0];
        from_[0] = from_odd;
        unary_ = std::accumulate(from_.begin() + k, from_.end(), std::uint64_t{0});
    }

    /// Takes in samples of index 0.
    void add_first(std::uint64_t nr_samples) { nr_samples_ += nr_samples; }

    [[nodiscard]] unsigned k() const { return k_; }
    [[nodiscard]] std::uint64_t bits() const { return nr_samples_ * (k_ + 1) + unary_; }
    /// Goes on to the next k.
    void advance() { unary_ -= from_[k_++]; }

private:
    unsigned k_;
    std::uint64_t nr_samples_ = 0;
    std::uint64_t unary_ = 0;
    std::array<std::uint64_t, 32> from_{};  // by the power of 2 that divides the multiple
};

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

/// The fewest bits of all k up to `max`, and the first k with them, unless all take `none` or more.
std::uint32_t find_best(unsigned& k, Totals totals, unsigned max) {
    std::uint32_t best = none;
    for (; totals.k() <= max; totals.advance()) {
        if (totals.bits() >= best) continue;
        best = static_cast<std::uint32_t>(totals.bits());
        k = totals.k();
    }
    return best;
}

}  // namespace

bool OptimizeSizes::operator()(unsigned& k, std::uint32_t& total,
                               std::span<const unsigned> sizes) const {
    const std::uint32_t best = find_best(k, Totals(sizes, min_), max_);
    if (best == none) return false;
    total = best;
    return true;
}

// What is in the j largest clusters after r merges was in j + r clusters before, so in the j + r
// largest at most: no sample's index falls by more than r.
std::uint32_t OptimizeSizes::floor_after_merges(std::span<const unsigned> sizes,
                                                std::size_t nr_merges) const {
    const auto nr_first = std::min(nr_merges, sizes.size());
    Totals totals(sizes.subspan(nr_first), min_);
    const auto first = sizes.first(nr_first);
    totals.add_first(std::accumulate(first.begin(), first.end(), std::uint64_t{0}));
    unsigned k = 0;
    return find_best(k, totals, max_);
}

}  // namespace vela::golomb_rice
