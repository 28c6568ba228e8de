#include <algorithm>
#include <utility>
#include <vela/gvm/fast/Learner.hpp>

namespace vela::gvm::fast {

template <typename T, typename Iterator>
std::unique_ptr<typename Learner<T, Iterator>::Info>& Learner<T, Iterator>::spare_() {
    static thread_local std::unique_ptr<Info> spare;
    return spare;
}

template <typename T, typename Iterator>
Learner<T, Iterator>::~Learner() {
    if (info_) spare_() = std::move(info_);
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::learn(unsigned nr_clusters, const Range<Iterator>& range) {
    if (!info_) info_ = std::move(spare_());
    if (!info_) info_ = std::make_unique<Info>();
    auto& [clustering, membership, name_of_position] = *info_;
    // There are never more clusters than deltas: a capacity beyond them would be memory unused,
    // up to more than any machine has.
    const std::size_t capacity = std::min<std::size_t>(nr_clusters, range.size());
    membership.reset(range.size(), capacity);
    complete_ = clustering.process_data(range, capacity, update_all_after_insert_, membership);
    return complete_;
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::merge_two_clusters() {
    return info_ && info_->clustering.merge_(info_->membership);
}

template <typename T, typename Iterator>
unsigned Learner<T, Iterator>::nr_clusters() const {
    return info_ ? static_cast<unsigned>(info_->clustering.nr_clusters()) : 0;
}

template <typename T, typename Iterator>
T Learner<T, Iterator>::cost() const {
    return info_ ? info_->clustering.cost() : T{0};
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_sizes(std::vector<unsigned>& sizes) const {
    return info_ && info_->clustering.get_sizes(sizes);
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_centers(std::vector<Center>& centers) const {
    return info_ && info_->clustering.get_centers(centers);
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_center_width(unsigned& bits) const {
    if (!info_) return false;
    bits = info_->clustering.center_width();
    return true;
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_ixs(std::vector<unsigned long>& ixs) const {
    if (!complete_) return false;
    info_->clustering.get_permutation(info_->name_of_position);
    return info_->membership.get_ixs(ixs, info_->name_of_position);
}

template class Learner<double, segment::Iterator<1, int>>;
template class Learner<double, segment::Iterator<2, int>>;

}  // namespace vela::gvm::fast
