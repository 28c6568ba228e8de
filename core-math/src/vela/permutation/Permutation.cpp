#include <algorithm>
#include <numeric>
#include <utility>
#include <vela/permutation/Permutation.hpp>

namespace vela::permutation {

void Permutation::identity(std::size_t n) {
    targets_.resize(n);
    std::iota(targets_.begin(), targets_.end(), Position{0});
    has_cycles_ = false;
}

void Permutation::invert() {
    compute_cycles_();
    std::ranges::reverse(cycles_);  // closed by its start at both ends, a cycle stays one
    std::vector<Position> sources(targets_.size());
    for (Position i = 0; i < targets_.size(); ++i)
        sources[targets_[i]] = i;
    targets_ = std::move(sources);
}

void Permutation::compute_cycles_() const {
    if (has_cycles_) return;
    has_cycles_ = true;
    const auto n = static_cast<Position>(targets_.size());
    cycles_.resize(n + n / 2);  // at the most, if all are pairs
    auto end = cycles_.begin();
    std::vector<std::uint8_t> walked(n);
    for (Position start = 0; start < n; ++start) {
        if (walked[start] || targets_[start] == start) continue;
        Position at = start;
        do {
            *end++ = at;
            walked[at] = true;
            at = targets_[at];
        } while (at != start);
        *end++ = start;
    }
    cycles_.erase(end, cycles_.end());
}

}  // namespace vela::permutation
