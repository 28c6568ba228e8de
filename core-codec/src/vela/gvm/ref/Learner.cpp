#include <algorithm>
#include <functional>
#include <vela/gvm/ref/Learner.hpp>
#include <vela/numeric/truncate.hpp>

namespace vela::gvm::ref {

template <typename Iterator>
bool Learner<Iterator>::learn(unsigned nr_clusters, const Range<Iterator>& range) {
    return setup_(nr_clusters, range) && process_data_();
}

template <typename Iterator>
bool Learner<Iterator>::setup_(unsigned nr_clusters, const Range<Iterator>& range) {
    if (nr_clusters == 0 || range.size() < nr_clusters) return false;
    range_ = range;
    clusters_.assign(nr_clusters, Cluster(exponent_));
    metas_.clear();
    for (std::size_t i = 0; i < clusters_.size(); ++i)
        metas_.push_back({i, i, &clusters_[i]});
    next_.assign(range.size(), 0);
    return true;
}

// Until the end of the pass meta i belongs to cluster i.
template <typename Iterator>
bool Learner<Iterator>::process_data_() {
    for (std::size_t i = 0; i < clusters_.size(); ++i)
        clusters_[i].insert(delta_(i));
    if (!merge_info_.setup(clusters_)) return false;
    for (unsigned long index = clusters_.size(); index < next_.size(); ++index)
        if (!process_(index)) return false;
    return sort_metas_();
}

template <typename Iterator>
bool Learner<Iterator>::process_(unsigned long index) {
    const auto [nearest, add_delta] = find_best_add_delta_(delta_(index));
    const auto merge = merge_info_.best_merge();
    return merge && add_delta > merge->delta ? replace_(*merge, index) : add_(nearest, index);
}

template <typename Iterator>
auto Learner<Iterator>::delta_(std::size_t index) const -> Element {
    return *(range_.begin() + static_cast<std::ptrdiff_t>(index));
}

template <typename Iterator>
std::pair<std::size_t, double> Learner<Iterator>::find_best_add_delta_(const Element& delta) const {
    std::size_t best = 0;
    double lowest = clusters_[best].add_delta(delta);
    for (std::size_t c = 1; c < clusters_.size(); ++c) {
        const double add_delta = clusters_[c].add_delta(delta);
        if (add_delta < lowest) {
            best = c;
            lowest = add_delta;
        }
    }
    return {best, lowest};
}

/// Merges x into y and starts x anew with one delta.
template <typename Iterator>
bool Learner<Iterator>::replace_(const Merge& merge, unsigned long index) {
    const auto [x, y] = std::pair(merge.x, merge.y);
    clusters_[y] = merge.united;
    clusters_[x] = Cluster(exponent_);
    clusters_[x].insert(delta_(index));
    append_(metas_[y], metas_[x].first, metas_[x].last);
    metas_[x].first = metas_[x].last = index;
    return merge_info_.update(clusters_, y) && merge_info_.update(clusters_, x);
}

template <typename Iterator>
bool Learner<Iterator>::add_(std::size_t c, unsigned long index) {
    clusters_[c].insert(delta_(index));
    append_(metas_[c], index, index);
    return merge_info_.update(clusters_, c);
}

template <typename Iterator>
void Learner<Iterator>::append_(Meta& to, unsigned long first, unsigned long last) {
    next_[to.last] = first;
    to.last = last;
}

template <typename Iterator>
bool Learner<Iterator>::merge_two_clusters() {
    // The table is not kept through a merge: it is made again when the next one needs it.
    if (merge_info_.size() != clusters_.size() && !merge_info_.setup(clusters_)) return false;
    if (const auto merge = merge_info_.best_merge(); merge && !apply_(*merge)) return false;
    return all_metas_point_at_clusters_() && sort_metas_();
}

/// Unites the pair in y; the last cluster takes the place of x, the last meta that of x's meta.
template <typename Iterator>
bool Learner<Iterator>::apply_(const Merge& merge) {
    Meta* const x = find_meta_(clusters_[merge.x]);
    Meta* const y = find_meta_(clusters_[merge.y]);
    Meta* const last = find_meta_(clusters_.back());
    if (!x || !y || !last) return false;

    clusters_[merge.y] = merge.united;
    append_(*y, x->first, x->last);
    if (x != last) {
        clusters_[merge.x] = clusters_.back();
        last->cluster = x->cluster;
    }
    clusters_.pop_back();
    *x = metas_.back();
    metas_.pop_back();
    return true;
}

template <typename Iterator>
auto Learner<Iterator>::find_meta_(const Cluster& cluster) -> Meta* {
    const auto found = std::find_if(metas_.begin(), metas_.end(),
                                    [&](const Meta& meta) { return meta.cluster == &cluster; });
    return found == metas_.end() ? nullptr : &*found;
}

template <typename Iterator>
bool Learner<Iterator>::all_metas_point_at_clusters_() const {
    const Cluster* const begin = clusters_.data();
    const Cluster* const end = begin + clusters_.size();
    return std::all_of(metas_.begin(), metas_.end(), [&](const Meta& meta) {
        return !std::less<>()(meta.cluster, begin) && std::less<>()(meta.cluster, end);
    });
}

/// Largest first.  False if a meta has no cluster.
template <typename Iterator>
bool Learner<Iterator>::sort_metas_() {
    for (const Meta& meta : metas_)
        if (!meta.cluster) return false;
    std::sort(metas_.begin(), metas_.end(),
              [](const Meta& a, const Meta& b) { return a.cluster->count() > b.cluster->count(); });
    return true;
}

template <typename Iterator>
double Learner<Iterator>::cost() const {
    double cost = 0.0;
    for (const Cluster& cluster : clusters_)
        cost += cluster.cost();
    return cost;
}

template <typename Iterator>
bool Learner<Iterator>::get_sizes(std::vector<unsigned>& sizes) const {
    if (sizes.size() != clusters_.size()) return false;
    for (std::size_t i = 0; i < metas_.size(); ++i) {
        if (!metas_[i].cluster) return false;
        sizes[i] = metas_[i].cluster->count();
    }
    return true;
}

template <typename Iterator>
bool Learner<Iterator>::get_centers(std::vector<Center>& centers) const {
    if (centers.size() != clusters_.size()) return false;
    for (std::size_t i = 0; i < metas_.size(); ++i) {
        const Cluster* const cluster = metas_[i].cluster;
        if (!cluster) return false;
        for (std::size_t axis = 0; axis < Iterator::dimension; ++axis)
            centers[i][axis] = numeric::truncate_to_int32(cluster->sum()[axis] / cluster->count());
    }
    return true;
}

template <typename Iterator>
bool Learner<Iterator>::get_ixs(std::vector<unsigned long>& ixs) const {
    if (ixs.size() != next_.size()) return false;
    for (std::size_t i = 0; i < metas_.size(); ++i) {
        unsigned long delta = metas_[i].first;
        for (; delta != metas_[i].last; delta = next_[delta])
            ixs[delta] = i;
        ixs[delta] = i;
    }
    return true;
}

template class Learner<segment::Iterator<1, int>>;
template class Learner<segment::Iterator<2, int>>;

}  // namespace vela::gvm::ref
