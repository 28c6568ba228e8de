#include <algorithm>
#include <vela/gvm/fast/Learner.hpp>

namespace vela::gvm::fast {

template <typename T, typename Iterator>
bool Learner<T, Iterator>::learn(unsigned nr_clusters, const Range<Iterator>& range) {
    // There are never more clusters than deltas: a capacity beyond them would be memory unused,
    // up to more than any machine has.
    const std::size_t capacity = std::min<std::size_t>(nr_clusters, range.size());
    info_ = std::make_unique<Info>(range.size(), capacity, update_all_after_insert_);
    return info_->clustering.process_data(range, info_->membership);
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
bool Learner<T, Iterator>::get_ixs(std::vector<unsigned long>& ixs) const {
    if (!info_ || !info_->membership.get_ixs(ixs)) return false;
    std::vector<unsigned long> permutation;
    info_->clustering.get_permutation(permutation);
    for (unsigned long& ix : ixs)
        ix = permutation[ix];
    return true;
}

template class Learner<double, segment::Iterator<1, int>>;
template class Learner<double, segment::Iterator<2, int>>;

}  // namespace vela::gvm::fast
