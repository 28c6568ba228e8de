#include <vela/gvm/fast/Membership.hpp>

namespace vela::gvm::fast {

void Membership::reset(std::size_t nr_deltas, std::size_t nr_positions) {
    list_of_delta_.assign(nr_deltas, none_);
    list_at_.assign(nr_positions, none_);
    appended_.clear();
    nr_lists_ = 0;
}

bool Membership::assign(std::size_t delta_ix, std::size_t cluster_ix) {
    if (delta_ix >= list_of_delta_.size() || cluster_ix >= list_at_.size()) return false;
    List& list = list_at_[cluster_ix];
    if (list == none_) list = nr_lists_++;
    list_of_delta_[delta_ix] = list;
    return true;
}

bool Membership::rename(std::size_t from, std::size_t to) {
    if (from >= list_at_.size() || to >= list_at_.size()) return false;
    if (from == to) return true;
    if (list_at_[to] != none_) return false;
    list_at_[to] = list_at_[from];
    list_at_[from] = none_;
    return true;
}

bool Membership::append(std::size_t from, std::size_t to) {
    if (from >= list_at_.size() || to >= list_at_.size() || from == to) return false;
    if (list_at_[to] == none_)
        list_at_[to] = list_at_[from];
    else if (list_at_[from] != none_)
        appended_.emplace_back(list_at_[from], list_at_[to]);
    list_at_[from] = none_;
    return true;
}

bool Membership::get_ixs(std::vector<unsigned long>& ixs) const {
    std::vector<unsigned long> positions(list_at_.size());
    for (std::size_t i = 0; i < positions.size(); ++i)
        positions[i] = i;
    return get_ixs(ixs, positions);
}

bool Membership::get_ixs(std::vector<unsigned long>& ixs,
                         const std::vector<unsigned long>& names) const {
    if (ixs.size() != list_of_delta_.size()) return false;
    name_of_list_.resize(nr_lists_);
    for (std::size_t position = 0; position < list_at_.size(); ++position)
        if (list_at_[position] != none_) name_of_list_[list_at_[position]] = names[position];
    // A list is appended to one that is left, or is itself appended later.
    for (auto at = appended_.rbegin(); at != appended_.rend(); ++at)
        name_of_list_[at->first] = name_of_list_[at->second];
    for (std::size_t i = 0; i < ixs.size(); ++i)
        if (list_of_delta_[i] != none_) ixs[i] = name_of_list_[list_of_delta_[i]];
    return true;
}

}  // namespace vela::gvm::fast
