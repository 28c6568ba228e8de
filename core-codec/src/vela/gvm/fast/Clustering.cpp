#include <algorithm>
#include <cmath>
#include <numeric>
#include <vela/gvm/fast/Clustering.hpp>
#include <vela/numeric/truncate.hpp>

namespace vela::gvm::fast {

namespace {

/// What the sieve estimates, for one cluster.
template <std::size_t N>
float estimate(const sieve::Columns<N>& columns, Position at, const float (&delta)[N]) {
    float length = 0;
    for (std::size_t axis = 0; axis < N; ++axis) {
        const float gap = columns.mean[axis][at] - delta[axis];
        length += gap * gap;
    }
    return length * columns.weight[at];
}

template <std::size_t N>
double largest_magnitude(const Range<segment::Iterator<N, int>>& range) {
    std::int64_t largest = 0;
    for (std::size_t i = 0; i < range.size(); ++i)
        for (const int x : *(range.begin() + static_cast<std::ptrdiff_t>(i)))
            largest = std::max<std::int64_t>(largest, std::abs(std::int64_t{x}));
    return static_cast<double>(largest);
}

}  // namespace

template <typename T, std::size_t N>
void Clustering<T, N>::reset_(const Range<Iterator>& range, std::size_t capacity,
                              bool update_all_after_insert) {
    nr_clusters_ = 0;
    capacity_ = capacity;
    update_all_after_insert_ = update_all_after_insert;
    slack_ = sieve::slack(range.size(), N, largest_magnitude<N>(range));
    storage_.reset(capacity);
    by_size_.reset(capacity);
    merges_.reset(capacity, slack_);
    order_.clear();
    costs_.resize(capacity + costs::padding);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_data(const Range<Iterator>& range, std::size_t capacity,
                                    bool update_all_after_insert, Membership& membership) {
    reset_(range, capacity, update_all_after_insert);
    bool good = true;
    for (std::size_t first = 0; good && first < range.size(); first += sieve::batch)
        good = process_batch_(range, first, membership);
    order_.resize(nr_clusters_);
    std::iota(order_.begin(), order_.end(), Position{0});
    sort_();
    return good;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_batch_(const Range<Iterator>& range, std::size_t first,
                                      Membership& membership) {
    const std::size_t size = std::min(sieve::batch, range.size() - first);
    std::array<Delta, sieve::batch> deltas;
    float shadows[sieve::batch][N];
    for (std::size_t i = 0; i < sieve::batch; ++i) {
        const std::size_t index = first + std::min(i, size - 1);
        const auto element = *(range.begin() + static_cast<std::ptrdiff_t>(index));
        typename Cluster::Vector vector;
        for (std::size_t axis = 0; axis < N; ++axis) {
            vector[axis] = element[axis];
            deltas[i].shadow[axis] = shadows[i][axis] = static_cast<float>(element[axis]);
        }
        deltas[i].alone = Cluster::alone(vector);
        deltas[i].index = index;
    }
    sieve::Found found[sieve::batch];
    sieve::functions<N>().nearest(found, storage_.shadows(), nr_clusters_, shadows, slack_);
    nr_changed_ = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const bool good = nr_clusters_ == 0   ? process_first_(deltas[i], membership)
                          : nr_clusters_ == 1 ? process_second_(deltas[i], membership)
                                              : process_next_(deltas[i], found[i], membership);
        if (!good) return false;
    }
    return true;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_first_(const Delta& delta, Membership& membership) {
    if (capacity_ == 0) return false;
    start_(delta.alone, no_partner, 0);
    return membership.assign(delta.index, 0);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_second_(const Delta& delta, Membership& membership) {
    Cluster cluster = storage_.load(0);
    T add_cost;
    cluster.merge_delta(add_cost, delta.alone);
    if (add_cost != 0 && capacity_ != 1) {
        // The cost as the new cluster's own merge with the old one: not the bits of the add cost.
        T merge_cost;
        delta.alone.merge_delta(merge_cost, cluster);
        start_(delta.alone, 0, merge_cost);
        return membership.assign(delta.index, 1);
    }
    cluster.merge(delta.alone);
    storage_.store(0, cluster);
    by_size_.grow(0, cluster.count);
    changed_[nr_changed_++] = 0;
    return membership.assign(delta.index, 0);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_next_(const Delta& delta, const sieve::Found& found,
                                     Membership& membership) {
    const auto [nearest, cost] = find_nearest_(delta, found);
    if (cost == 0) {
        if (nearest != 0) merges_.renew_before(nearest);
        insert_(nearest, delta.alone);
        return membership.assign(delta.index, nearest);
    }
    merges_.renew();
    if (nr_clusters_ < capacity_) {
        start_(delta.alone, nearest, cost);
        return membership.assign(delta.index, nr_clusters_ - 1);
    }
    if (cost <= merges_.bound() || !(merges_.lowest() < cost)) {
        insert_(nearest, delta.alone);
        return membership.assign(delta.index, nearest);
    }
    const Position x = merges_.cheapest();
    return merge_and_start_(x, delta.alone, membership) && membership.assign(delta.index, x);
}

/// Whether the cluster that the sieve named is still the only one that matters.
template <typename T, std::size_t N>
bool Clustering<T, N>::still_alone_(const Delta& delta, const sieve::Found& found) const {
    if (found.position == sieve::several) return false;
    bool alone = true;
    for (std::size_t i = 0; i < nr_changed_; ++i) {
        alone &= changed_[i] != found.position;
        alone &= estimate<N>(storage_.shadows(), changed_[i], delta.shadow) > found.limit;
    }
    return alone;
}

template <typename T, std::size_t N>
typename Clustering<T, N>::Nearest Clustering<T, N>::find_nearest_(const Delta& delta,
                                                                   const sieve::Found& found) {
    if (!still_alone_(delta, found)) return find_nearest_of_all_(delta.alone);
    Nearest nearest{found.position, 0};
    storage_.load(nearest.at).merge_delta(nearest.cost, delta.alone);
    return nearest;
}

/// A cluster that the delta lies on exactly, whatever rounding makes of the others; else that of
/// the lowest cost.  Of equals, position 0 and then the largest.
template <typename T, std::size_t N>
typename Clustering<T, N>::Nearest Clustering<T, N>::find_nearest_of_all_(const Cluster& delta) {
    costs::Fixed<N> fixed{{}, delta.sum_sq, 1, 0};
    std::copy(delta.sum.begin(), delta.sum.end(), fixed.sum);
    costs::functions<N>().with_partner(costs_.data(), storage_.columns(), 0, nr_clusters_, fixed);
    const auto [lowest, has_hit] = costs::functions<N>().lowest(costs_.data(), 0, nr_clusters_);
    const T cost = has_hit ? 0 : lowest;
    return {first_by_size_(cost), cost};
}

template <typename T, std::size_t N>
Position Clustering<T, N>::first_by_size_(T cost) const {
    if (costs_[0] == cost) return 0;
    Position best = no_partner;
    for (Position c = 1; c < nr_clusters_; ++c)
        if (costs_[c] == cost && (best == no_partner || by_size_.before(c, best))) best = c;
    return best;
}

template <typename T, std::size_t N>
void Clustering<T, N>::start_(const Cluster& delta, Position partner, T partner_delta) {
    const auto at = static_cast<Position>(nr_clusters_++);
    storage_.store(at, delta);
    by_size_.grow(at, 1);
    merges_.start(at, partner, partner_delta);
    changed_[nr_changed_++] = at;
}

template <typename T, std::size_t N>
void Clustering<T, N>::insert_(Position c, const Cluster& delta) {
    Cluster cluster = storage_.load(c);
    cluster.merge(delta);
    storage_.store(c, cluster);
    by_size_.grow(c, cluster.count);
    merges_.after_insert(c, update_all_after_insert_);
    changed_[nr_changed_++] = c;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::merge_and_start_(Position x, const Cluster& delta, Membership& membership) {
    const Position p = merges_.partner(x);
    absorb_(p, x);
    storage_.store(x, delta);
    by_size_.shrink_to_one(x);
    merges_.after_merge(p, x);
    changed_[nr_changed_++] = p;
    changed_[nr_changed_++] = x;
    return membership.append(x, p);
}

template <typename T, std::size_t N>
void Clustering<T, N>::absorb_(Position p, Position x) {
    Cluster cluster = storage_.load(p);
    cluster.merge(storage_.load(x));
    storage_.store(p, cluster);
    by_size_.grow(p, cluster.count);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::merge_(Membership& membership) {
    if (nr_clusters_ < 2) return false;
    merges_.renew();
    const Position x = merges_.cheapest();
    const Position p = merges_.partner(x);
    const auto last = static_cast<Position>(--nr_clusters_);
    absorb_(p, x);
    if (x != last) {
        // The last cluster moves to the position that falls free, where others are below it.
        storage_.store(x, storage_.load(last));
        by_size_.grow(x, storage_.count(x));
        merges_.search(x);
    }
    merges_.drop(last);
    storage_.erase(last);
    if (x != last)
        merges_.after_merge(p, x);
    else
        merges_.after_insert(p, update_all_after_insert_);
    std::erase(order_, last);
    sort_();
    return membership.append(x, p) && membership.rename(last, x);
}

template <typename T, std::size_t N>
void Clustering<T, N>::sort_() {
    by_size_.sort(order_);
}

template <typename T, std::size_t N>
T Clustering<T, N>::cost() const {
    T sum = 0;
    for (Position c = 0; c < nr_clusters_; ++c)
        sum += storage_.cost(c);
    return sum;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::get_sizes(std::vector<unsigned>& sizes) const {
    if (sizes.size() != nr_clusters_) return false;
    for (std::size_t i = 0; i < nr_clusters_; ++i)
        sizes[i] = static_cast<unsigned>(storage_.count(order_[i]));
    return true;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::get_centers(std::vector<Center>& centers) const {
    if (centers.size() != nr_clusters_) return false;
    for (std::size_t i = 0; i < nr_clusters_; ++i)
        for (std::size_t axis = 0; axis < N; ++axis)
            centers[i][axis] = numeric::truncate_to_int32(storage_.sum(axis, order_[i])) /
                               storage_.count(order_[i]);
    return true;
}

template <typename T, std::size_t N>
void Clustering<T, N>::get_permutation(std::vector<unsigned long>& ixs) const {
    ixs.resize(nr_clusters_);
    for (std::size_t i = 0; i < nr_clusters_; ++i)
        ixs[order_[i]] = i;
}

template class Clustering<double, 1>;
template class Clustering<double, 2>;

}  // namespace vela::gvm::fast
