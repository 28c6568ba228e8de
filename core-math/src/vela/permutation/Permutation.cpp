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
    cycles_.clear();
    std::vector<std::uint8_t> walked(targets_.size());
    for (Position start = 0; start < targets_.size(); ++start) {
        if (walked[start] || targets_[start] == start) continue;
        Position at = start;
        do {
            cycles_.push_back(at);
            walked[at] = true;
            at = targets_[at];
        } while (at != start);
        cycles_.push_back(start);
    }
}

}  // namespace vela::permutation
