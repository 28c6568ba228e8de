#include <algorithm>
#include <vela/permutation/Permutation.hpp>

namespace vela::permutation {

void Permutation::identity(std::size_t n) {
    infos_.clear();
    infos_.reserve(n);
    for (std::size_t i = 0; i < n; ++i)
        infos_.push_back({i});
    cycles_.clear();
}

void Permutation::invert() {
    compute_cycles_();
    for (Cycle& cycle : cycles_) {
        std::ranges::reverse(cycle);
        for (std::size_t j = 0; j + 1 < cycle.size(); ++j) {
            infos_[cycle[j]].target = cycle[j + 1];
            infos_[cycle[j]].pos = j;
        }
    }
}

void Permutation::compute_cycles_() const {
    if (!cycles_.empty()) return;
    for (const Info& info : infos_)
        info.cycle = unset;

    bool open = false;
    for (std::size_t i = 0; i < infos_.size();) {
        const Info& info = infos_[i];
        if (info.cycle != unset) {
            // Back at the start of the open cycle, or at a position that an earlier one took.
            open = false;
            ++i;
            continue;
        }
        if (!open) {
            cycles_.push_back({i, i});
            open = true;
        } else {
            cycles_.back().back() = i;
            cycles_.back().push_back(cycles_.back().front());
        }
        info.cycle = cycles_.size() - 1;
        info.pos = cycles_.back().size() - 2;
        i = info.target;
    }
}

}  // namespace vela::permutation
