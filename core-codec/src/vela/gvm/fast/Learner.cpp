#include <algorithm>
#include <vela/gvm/fast/Learner.hpp>

namespace vela::gvm::fast {

template <typename T, typename Iterator>
bool Learner<T, Iterator>::learn(unsigned nr_clusters, const Range<Iterator>& range) {
    // There are never more clusters than deltas: a capacity beyond them would be memory unused,
    // up to more than any machine has.
    const std::size_t capacity = std::min<std::size_t>(nr_clusters, range.size());
    membership_.reset(range.size(), capacity);
    learned_ = true;
    complete_ = clustering_.process_data(range, capacity, update_all_after_insert_, membership_);
    return complete_;
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::merge_two_clusters() {
    return clustering_.merge_(membership_);
}

template <typename T, typename Iterator>
unsigned Learner<T, Iterator>::nr_clusters() const {
    return static_cast<unsigned>(clustering_.nr_clusters());
}

template <typename T, typename Iterator>
T Learner<T, Iterator>::cost() const {
    return clustering_.cost();
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_sizes(std::vector<unsigned>& sizes) const {
    return learned_ && clustering_.get_sizes(sizes);
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_centers(std::vector<Center>& centers) const {
    return learned_ && clustering_.get_centers(centers);
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_center_width(unsigned& bits) const {
    if (!learned_) return false;
    bits = clustering_.center_width();
    return true;
}

template <typename T, typename Iterator>
bool Learner<T, Iterator>::get_ixs(std::vector<unsigned long>& ixs) const {
    if (!complete_) return false;
    clustering_.get_permutation(name_of_position_);
    return membership_.get_ixs(ixs, name_of_position_);
}

template class Learner<double, segment::Iterator<1, int>>;
template class Learner<double, segment::Iterator<2, int>>;

}  // namespace vela::gvm::fast
