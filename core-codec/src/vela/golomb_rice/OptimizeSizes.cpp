#include <limits>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::golomb_rice {

namespace {

std::uint64_t bits_of(std::span<const unsigned> sizes, unsigned k) {
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        total += sizes[i] * (k + 1 + (std::uint64_t{i} >> k));
    return total;
}

}  // namespace

bool OptimizeSizes::operator()(unsigned& k, std::uint32_t& total,
                               std::span<const unsigned> sizes) const {
    constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t best = none;
    for (unsigned candidate = min_; candidate <= max_; ++candidate) {
        const std::uint64_t bits = bits_of(sizes, candidate);
        if (bits >= best) continue;
        best = static_cast<std::uint32_t>(bits);
        k = candidate;
    }
    if (best == none) return false;
    total = best;
    return true;
}

}  // namespace vela::golomb_rice
