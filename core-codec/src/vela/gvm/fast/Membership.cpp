#include <vela/gvm/fast/Membership.hpp>

namespace vela::gvm::fast {

Membership::Membership(std::size_t nr_deltas, std::size_t nr_positions)
    : next_(nr_deltas, end_), lists_(nr_positions) {}

bool Membership::assign(std::size_t delta_ix, std::size_t cluster_ix) {
    if (delta_ix >= next_.size() || cluster_ix >= lists_.size()) return false;
    Info& list = lists_[cluster_ix];
    (list.empty() ? list.first : next_[list.last]) = delta_ix;
    list.last = delta_ix;
    return true;
}

bool Membership::rename(std::size_t from, std::size_t to) {
    if (from >= lists_.size() || to >= lists_.size()) return false;
    if (from == to) return true;
    if (!lists_[to].empty()) return false;
    lists_[to] = lists_[from];
    lists_[from] = {};
    return true;
}

bool Membership::append(std::size_t from, std::size_t to) {
    if (from >= lists_.size() || to >= lists_.size() || from == to) return false;
    Info& head = lists_[to];
    const Info tail = lists_[from];
    lists_[from] = {};
    if (tail.empty()) return true;
    (head.empty() ? head.first : next_[head.last]) = tail.first;
    head.last = tail.last;
    return true;
}

bool Membership::get_ixs(std::vector<unsigned long>& ixs) const {
    if (ixs.size() != next_.size()) return false;
    for (std::size_t position = 0; position < lists_.size(); ++position)
        for (unsigned long ix = lists_[position].first; ix != end_; ix = next_[ix])
            ixs[ix] = position;
    return true;
}

}  // namespace vela::gvm::fast
