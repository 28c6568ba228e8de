#include <algorithm>
#include <limits>
#include <vela/gvm/fast/Clustering.hpp>
#include <vela/simd/widest.hpp>

namespace vela::gvm::fast {

namespace {

template <std::size_t N>
double largest_magnitude(Range<segment::Iterator<N, int>> range) {
    int lowest = 0;
    int highest = 0;
    for (std::size_t i = 0; i < range.size(); ++i)
        for (const int x : *(range.begin() + static_cast<std::ptrdiff_t>(i))) {
            lowest = std::min(lowest, x);
            highest = std::max(highest, x);
        }
    return std::max(-static_cast<double>(lowest), static_cast<double>(highest));
}

}  // namespace

template <typename T, std::size_t N>
void Clustering<T, N>::reset_(const Range<Iterator>& range, std::size_t capacity,
                              bool update_all_after_insert) {
    nr_clusters_ = 0;
    capacity_ = capacity;
    nr_deltas_ = range.size();
    update_all_after_insert_ = update_all_after_insert;
    slack_ = capacity > sieve::max_clusters
                 ? std::numeric_limits<float>::infinity()
                 : sieve::slack(range.size(), N, simd::widest<largest_magnitude<N>>(range));
    storage_.reset(capacity, range.size());
    by_size_.reset(capacity, range.size());
    merges_.reset(capacity, slack_);
    found_.resize(capacity + sieve::padding);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_data(const Range<Iterator>& range, std::size_t capacity,
                                    bool update_all_after_insert, Membership& membership) {
    reset_(range, capacity, update_all_after_insert);
    bool good = true;
    for (std::size_t first = 0; good && first < range.size(); first += sieve::batch)
        good = process_batch_(range, first, membership);
    return good;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_batch_(const Range<Iterator>& range, std::size_t first,
                                      Membership& membership) {
    const std::size_t size = std::min(sieve::batch, range.size() - first);
    std::array<Delta, sieve::batch> deltas;
    for (std::size_t i = 0; i < size; ++i) {
        const auto element = *(range.begin() + static_cast<std::ptrdiff_t>(first + i));
        typename Cluster::Vector vector;
        for (std::size_t axis = 0; axis < N; ++axis) {
            vector[axis] = element[axis];
            batch_.delta[axis][i] = static_cast<float>(element[axis]);
        }
        deltas[i] = {Cluster::alone(vector), first + i, i};
    }
    sieve_.nearest(batch_, storage_.shadows(), nr_clusters_, slack_);
    overtaken_.fill(0);
    for (std::size_t i = 0; i < size; ++i) {
        const Delta& delta = deltas[i];
        const bool good = nr_clusters_ == 0   ? process_first_(delta, membership)
                          : nr_clusters_ == 1 ? process_second_(delta, membership)
                                              : process_next_(delta, membership);
        if (!good) return false;
    }
    return true;
}

/// The deltas to which the cluster has come to matter, or did before, have to look again.
template <typename T, std::size_t N>
void Clustering<T, N>::note_change_(Position c) {
    const auto columns = storage_.shadows();
    const float weight = columns.weight[c];
    float mean[N];
    for (std::size_t axis = 0; axis < N; ++axis)
        mean[axis] = columns.mean[axis][c];
    for (std::size_t i = 0; i < sieve::batch; ++i) {
        float length = 0;
        for (std::size_t axis = 0; axis < N; ++axis) {
            const float gap = mean[axis] - batch_.delta[axis][i];
            length += gap * gap;
        }
        const bool matters = (length * weight <= batch_.limit[i]) | (batch_.position[i] == c);
        overtaken_[i] |= matters ? ~std::uint32_t{0} : 0;
    }
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_first_(const Delta& delta, Membership& membership) {
    if (capacity_ == 0) return false;
    start_(delta.alone, no_partner, 0);
    return membership.assign(delta.index, 0);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_second_(const Delta& delta, Membership& membership) {
    Cluster cluster = storage_[0];
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
    note_change_(0);
    return membership.assign(delta.index, 0);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_next_(const Delta& delta, Membership& membership) {
    const Nearest nearest = find_nearest_(delta);
    const bool full = nr_clusters_ == capacity_;
    // By far the most common: exact hit or not, nothing has to be searched, nor the cost be known.
    if (full && merges_.settled() && nearest.limit <= merges_.bound())
        return add_to_(nearest, delta, membership);
    if (is_hit_(nearest)) {
        merges_.renew_before(nearest.at);
        return add_to_(nearest, delta, membership);
    }
    merges_.renew();
    if (!full) {
        start_(delta.alone, nearest.at, nearest.cost);
        return membership.assign(delta.index, nr_clusters_ - 1);
    }
    const Position x =
        nearest.limit <= merges_.bound() ? no_partner : merges_.cheapest_below(nearest.cost);
    if (x == no_partner) return add_to_(nearest, delta, membership);
    return merge_and_start_(x, delta, membership) && membership.assign(delta.index, x);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::add_to_(const Nearest& nearest, const Delta& delta, Membership& membership) {
    insert_(nearest, delta.alone);
    return membership.assign(delta.index, nearest.at);
}

template <typename T, std::size_t N>
typename Clustering<T, N>::Nearest Clustering<T, N>::find_nearest_(const Delta& delta) {
    const Position alone = batch_.position[delta.at];
    if (alone == sieve::several || overtaken_[delta.at] != 0) return find_nearest_of_all_(delta);
    Nearest nearest = adding_to_(alone, delta.alone);
    nearest.limit = batch_.limit[delta.at];
    return nearest;
}

/// A cluster that the delta lies on exactly, whatever rounding makes of the others; else that of
/// the lowest cost.  Of equals, position 0 and then the largest.
template <typename T, std::size_t N>
typename Clustering<T, N>::Nearest Clustering<T, N>::find_nearest_of_all_(const Delta& delta) {
    float shadow[N];
    for (std::size_t axis = 0; axis < N; ++axis)
        shadow[axis] = batch_.delta[axis][delta.at];
    const std::size_t nr_found =
        sieve_.all_nearest(found_.data(), storage_.shadows(), nr_clusters_, shadow, slack_);
    Nearest best = adding_to_(found_[0], delta.alone);
    for (std::size_t i = 1; i < nr_found; ++i) {
        const Nearest next = adding_to_(found_[i], delta.alone);
        const bool level = next.cost == best.cost;
        if (level ? best.at != 0 && by_size_.before(next.at, best.at)
                  : best.cost != 0 && (next.cost == 0 || next.cost < best.cost))
            best = next;
    }
    return best;
}

template <typename T, std::size_t N>
typename Clustering<T, N>::Nearest Clustering<T, N>::adding_to_(Position c,
                                                                const Cluster& delta) const {
    const Cluster& cluster = storage_[c];
    const T share = cluster.united_share(delta);
    const T cost = cluster.merge_delta(delta, share);
    return {c, cost, share, cost};
}

/// Asks the limit first: where it is high the division for the cost need not be waited for, and
/// what processors foretold wrongly shows at once.
template <typename T, std::size_t N>
bool Clustering<T, N>::is_hit_(const Nearest& nearest) const {
    return nearest.limit <= 3 * slack_ && nearest.cost == 0;
}

template <typename T, std::size_t N>
void Clustering<T, N>::start_(const Cluster& delta, Position partner, T partner_delta) {
    const auto at = static_cast<Position>(nr_clusters_++);
    storage_.store(at, delta);
    by_size_.grow(at, 1);
    merges_.start(at, partner, partner_delta);
    note_change_(at);
}

template <typename T, std::size_t N>
void Clustering<T, N>::insert_(const Nearest& nearest, const Cluster& delta) {
    const Position c = nearest.at;
    storage_.merge(c, delta, nearest.share);
    by_size_.grow(c, storage_[c].count);
    merges_.after_insert(c, update_all_after_insert_);
    note_change_(c);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::merge_and_start_(Position x, const Delta& delta, Membership& membership) {
    const Position p = merges_.partner(x);
    absorb_(p, x);
    storage_.store(x, delta.alone);
    by_size_.shrink_to_one(x);
    note_change_(p);
    merges_.after_merge(p, x, partner_of_started_(delta, x));
    note_change_(x);
    return membership.append(x, p);
}

/// The cheapest merge of the cluster that a delta has started at `at`, if the sieve's look for that
/// delta tells it; else `no_partner`.
///
/// To merge with a cluster of one costs what it costs to add its delta, but for the rounding, which
/// the sieve's bound covers either way round.  So if the look has left one cluster alone, and no
/// change since has come to matter, that of the merge just made included, no other can be as cheap.
/// `several` is no lower position, and neither is the cluster that stood at `at` before.
template <typename T, std::size_t N>
Position Clustering<T, N>::partner_of_started_(const Delta& delta, Position at) const {
    const Position alone = batch_.position[delta.at];
    return alone < at && overtaken_[delta.at] == 0 ? alone : no_partner;
}

template <typename T, std::size_t N>
void Clustering<T, N>::absorb_(Position p, Position x) {
    storage_.merge(p, storage_[x], storage_[p].united_share(storage_[x]));
    by_size_.grow(p, storage_[p].count);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::merge_(Membership& membership) {
    if (nr_clusters_ < 2) return false;
    merges_.renew();
    const Position x = merges_.cheapest_below(std::numeric_limits<T>::infinity());
    const Position p = merges_.partner(x);
    const auto last = static_cast<Position>(--nr_clusters_);
    absorb_(p, x);
    if (x != last) {
        // The last cluster moves to the position that falls free, where others are below it.
        storage_.store(x, storage_[last]);
        by_size_.grow(x, storage_[x].count);
        merges_.search(x);
    }
    merges_.drop(last);
    storage_.erase(last);
    if (x != last)
        merges_.after_merge(p, x);
    else
        merges_.after_insert(p, update_all_after_insert_);
    return membership.append(x, p) && membership.rename(last, x);
}

template class Clustering<double, 1>;
template class Clustering<double, 2>;

}  // namespace vela::gvm::fast
