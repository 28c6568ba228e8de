#include <algorithm>
#include <numeric>
#include <utility>
#include <vela/gvm/fast/Clustering.hpp>
#include <vela/numeric/truncate.hpp>

namespace vela::gvm::fast {

namespace {

template <typename T, std::size_t N>
costs::Fixed<N> fixed(const Cluster<T, N>& cluster) {
    costs::Fixed<N> fixed{{}, cluster.sum_sq, static_cast<double>(cluster.count), cluster.cost};
    for (std::size_t i = 0; i < N; ++i)
        fixed.sum[i] = cluster.sum[i];
    return fixed;
}

}  // namespace

template <typename T, std::size_t N>
Clustering<T, N>::Clustering(std::size_t capacity, bool update_all_after_insert)
    : order_(capacity),
      place_(capacity),
      storage_(capacity),
      update_all_after_insert_(update_all_after_insert),
      capacity_(capacity),
      costs_(capacity + costs::padding),
      other_costs_(capacity + costs::padding) {
    std::iota(order_.begin(), order_.end(), Position{0});
    std::iota(place_.begin(), place_.end(), std::size_t{0});
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_data(const Range<Iterator>& range, Membership& membership) {
    for (std::size_t index = 0; index < range.size(); ++index) {
        const auto element = *(range.begin() + static_cast<std::ptrdiff_t>(index));
        typename Cluster::Vector delta;
        std::copy(element.begin(), element.end(), delta.begin());
        if (!process_(Cluster::alone(delta), membership, index)) return false;
    }
    return true;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_(const Cluster& delta, Membership& membership, std::size_t index) {
    switch (nr_clusters_) {
        case 0:
            return process_first_(delta, membership, index);
        case 1:
            return process_second_(delta, membership, index);
        default:
            return process_next_(delta, membership, index);
    }
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_first_(const Cluster& delta, Membership& membership,
                                      std::size_t index) {
    if (capacity_ == 0) return false;
    start_(delta, no_partner, 0);
    return membership.assign(index, 0);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_second_(const Cluster& delta, Membership& membership,
                                       std::size_t index) {
    if (add_cost_(0, delta) != 0 && capacity_ != 1) {
        // The cost as the new cluster's own merge with the old one: not the bits of the add cost.
        T merge_cost;
        delta.merge_delta(merge_cost, storage_.load(0));
        start_(delta, 0, merge_cost);
        storage_.dirty[0] = false;
        return membership.assign(index, 1);
    }
    Cluster cluster = storage_.load(0);
    cluster.merge(delta);
    storage_.store(0, cluster);
    mark_(0);
    return membership.assign(index, 0);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::process_next_(const Cluster& delta, Membership& membership,
                                     std::size_t index) {
    const auto insert = [&](Position c) {
        insert_(c, delta);
        return membership.assign(index, c);
    };

    compute_add_costs_(delta);
    const auto [lowest_add, has_hit] = costs::functions<N>().lowest(costs_.data(), 0, nr_clusters_);
    // Rounding can bring another cost below 0; the exact hit is taken all the same.
    if (has_hit) return insert(find_exact_hit_());
    renew_merges_();

    if (nr_clusters_ < capacity_) {
        start_(delta, first_by_size_(costs_, lowest_add, 0), lowest_add);
        return membership.assign(index, nr_clusters_ - 1);
    }
    const T lowest_merge = lowest_merge_();
    if (!(lowest_merge < lowest_add)) return insert(first_by_size_(costs_, lowest_add, 0));
    const Position x = first_by_size_(storage_.best_delta, lowest_merge, 1);
    return merge_and_start_(x, delta, membership) && membership.assign(index, x);
}

template <typename T, std::size_t N>
void Clustering<T, N>::compute_add_costs_(const Cluster& delta) {
    costs::functions<N>().with_partner(costs_.data(), storage_.columns(), 0, nr_clusters_,
                                       fixed(delta));
}

/// The cluster that the delta lies on exactly: position 0 if it does, else the largest.  Merges of
/// clusters larger than that one are renewed, others keep what they remember.
template <typename T, std::size_t N>
Position Clustering<T, N>::find_exact_hit_() {
    if (costs_[0] == 0) return 0;
    goc_best_merge_(1);
    std::size_t i = 0;
    for (; costs_[order_[i]] != 0; ++i)
        goc_best_merge_(order_[i]);
    return order_[i];
}

/// Of equals, the preferred position and then the largest cluster.  Position 0 has no merge.
template <typename T, std::size_t N>
Position Clustering<T, N>::first_by_size_(const std::vector<T>& values, T value,
                                          Position preferred) {
    if (values[preferred] == value) return preferred;
    std::size_t i = 0;
    while (values[order_[i]] != value || order_[i] < preferred)
        ++i;
    return order_[i];
}

/// Free positions stand in `order` at their own number, so that the new cluster is last in both.
template <typename T, std::size_t N>
void Clustering<T, N>::start_(const Cluster& delta, Position partner, T partner_delta) {
    const auto at = static_cast<Position>(nr_clusters_);
    storage_.store(at, delta);
    storage_.best_merge[at] = partner;
    storage_.best_delta[at] = partner_delta;
    storage_.dirty[at] = false;
    ++nr_clusters_;
}

template <typename T, std::size_t N>
void Clustering<T, N>::insert_(Position c, const Cluster& delta) {
    Cluster cluster = storage_.load(c);
    cluster.merge(delta);
    storage_.store(c, cluster);
    mark_(c);
    bubble_up_(c);
    update_after_insert_(c);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::merge_and_start_(Position x, const Cluster& delta, Membership& membership) {
    const Position p = storage_.best_merge[x];
    absorb_(p, x);
    storage_.store(x, delta);
    mark_(x);
    bubble_down_(x);
    update_after_merge_(p, x);
    return membership.append(x, p);
}

template <typename T, std::size_t N>
void Clustering<T, N>::absorb_(Position p, Position x) {
    Cluster cluster = storage_.load(p);
    cluster.merge(storage_.load(x));
    storage_.store(p, cluster);
    mark_(p);
    bubble_up_(p);
}

template <typename T, std::size_t N>
bool Clustering<T, N>::merge_(Membership& membership) {
    if (nr_clusters_ < 2) return false;
    renew_merges_();
    const Position x = first_by_size_(storage_.best_delta, lowest_merge_(), 1);
    const Position p = storage_.best_merge[x];
    const auto last = static_cast<Position>(nr_clusters_ - 1);
    absorb_(p, x);
    storage_.store(x, {});
    bubble_down_(x);
    if (x == last) {
        --nr_clusters_;
        update_after_insert_(p);
        return membership.append(x, p);
    }
    move_last_to_(x);
    find_best_merge_for_(x);
    --nr_clusters_;
    update_after_merge_(p, x);
    return membership.append(x, p) && membership.rename(last, x);
}

/// The cluster comes to stand behind all others of its size in `order`.
template <typename T, std::size_t N>
void Clustering<T, N>::move_last_to_(Position x) {
    const auto last = static_cast<Position>(nr_clusters_ - 1);
    storage_.copy(last, x);
    bubble_up_(x);
    storage_.store(last, {});
    bubble_down_(last);
}

template <typename T, std::size_t N>
T Clustering<T, N>::add_cost_(Position c, const Cluster& delta) const {
    T cost;
    storage_.load(c).merge_delta(cost, delta);
    return cost;
}

template <typename T, std::size_t N>
T Clustering<T, N>::merge_cost_(Position owner, Position partner) const {
    T cost;
    storage_.load(owner).merge_delta(cost, storage_.load(partner));
    return cost;
}

/// Partner of `c` after what is behind the truth was renewed; position 0 has none.
template <typename T, std::size_t N>
Position Clustering<T, N>::goc_best_merge_(Position c) {
    if (c == 0) return no_partner;
    if (storage_.dirty[c] || storage_.dirty[storage_.best_merge[c]]) find_best_merge_for_(c);
    return storage_.best_merge[c];
}

/// Of equals, the lowest position.
template <typename T, std::size_t N>
void Clustering<T, N>::find_best_merge_for_(Position c) {
    costs::functions<N>().as_owner(other_costs_.data(), storage_.columns(), 0, c,
                                   fixed(storage_.load(c)));
    const T lowest = costs::functions<N>().lowest(other_costs_.data(), 0, c).value;
    const auto best = std::find(other_costs_.begin(), other_costs_.end(), lowest);
    storage_.best_merge[c] = static_cast<Position>(best - other_costs_.begin());
    storage_.best_delta[c] = *best;
}

/// Searches again what a mark says is behind the truth.
template <typename T, std::size_t N>
void Clustering<T, N>::renew_merges_() {
    if (!any_dirty_) return;
    for (Position c = 1; c < nr_clusters_; ++c)
        goc_best_merge_(c);
}

template <typename T, std::size_t N>
T Clustering<T, N>::lowest_merge_() const {
    return costs::functions<N>().lowest(storage_.best_delta.data(), 1, nr_clusters_).value;
}

/// Renews the remembered merge of `x` if it is with `partner`, or makes it so if that is cheaper.
template <typename T, std::size_t N>
void Clustering<T, N>::offer_(Position x, Position partner, T delta) {
    if (storage_.best_merge[x] != partner && !(storage_.best_delta[x] > delta)) return;
    storage_.best_merge[x] = partner;
    storage_.best_delta[x] = delta;
}

template <typename T, std::size_t N>
void Clustering<T, N>::update_after_insert_(Position c) {
    if (update_all_after_insert_) {
        costs::functions<N>().with_partner(costs_.data(), storage_.columns(), c + 1, nr_clusters_,
                                           fixed(storage_.load(c)));
        for (Position x = c + 1; x < nr_clusters_; ++x)
            offer_(x, c, costs_[x]);
        clear_dirty_();
        mark_(c);
        return;
    }
    if (storage_.best_merge[c] != no_partner)
        storage_.best_delta[c] = merge_cost_(c, storage_.best_merge[c]);
    for (Position x = c + 1; x < nr_clusters_; ++x)
        if (storage_.best_merge[x] == c) storage_.best_delta[x] = merge_cost_(x, c);
    clear_dirty_();
}

/// `a` absorbed what was at `b`, and `b` holds something else now.
template <typename T, std::size_t N>
void Clustering<T, N>::update_after_merge_(Position a, Position b) {
    const auto& compute = costs::functions<N>().with_partner;
    compute(costs_.data(), storage_.columns(), a + 1, nr_clusters_, fixed(storage_.load(a)));
    compute(other_costs_.data(), storage_.columns(), b + 1, nr_clusters_, fixed(storage_.load(b)));
    for (Position x = a + 1; x < nr_clusters_; ++x) {
        offer_(x, a, costs_[x]);
        if (x > b) offer_(x, b, other_costs_[x]);
    }
    clear_dirty_();
    mark_(a);
    mark_(b);
}

template <typename T, std::size_t N>
void Clustering<T, N>::mark_(Position c) {
    storage_.dirty[c] = true;
    any_dirty_ = true;
}

template <typename T, std::size_t N>
void Clustering<T, N>::clear_dirty_() {
    if (!any_dirty_) return;
    any_dirty_ = false;
    std::fill(storage_.dirty.begin(), storage_.dirty.end(), std::uint8_t{false});
}

template <typename T, std::size_t N>
void Clustering<T, N>::bubble_up_(Position c) {
    for (std::size_t i = place_[c]; i > 0 && storage_.count[c] > storage_.count[order_[i - 1]]; --i)
        swap_places_(i, i - 1);
}

template <typename T, std::size_t N>
void Clustering<T, N>::bubble_down_(Position c) {
    const std::size_t last = nr_clusters_ - 1;
    for (std::size_t i = place_[c]; i < last && storage_.count[c] < storage_.count[order_[i + 1]];
         ++i)
        swap_places_(i, i + 1);
}

template <typename T, std::size_t N>
void Clustering<T, N>::swap_places_(std::size_t i, std::size_t j) {
    std::swap(order_[i], order_[j]);
    place_[order_[i]] = i;
    place_[order_[j]] = j;
}

template <typename T, std::size_t N>
T Clustering<T, N>::cost() const {
    return std::accumulate(storage_.cost.begin(),
                           storage_.cost.begin() + static_cast<std::ptrdiff_t>(nr_clusters_), T{0});
}

template <typename T, std::size_t N>
bool Clustering<T, N>::get_sizes(std::vector<unsigned>& sizes) const {
    if (sizes.size() != nr_clusters_) return false;
    for (std::size_t i = 0; i < nr_clusters_; ++i)
        sizes[i] = static_cast<unsigned>(storage_.count[order_[i]]);
    return true;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::get_centers(std::vector<Center>& centers) const {
    if (centers.size() != nr_clusters_) return false;
    for (std::size_t i = 0; i < nr_clusters_; ++i)
        for (std::size_t axis = 0; axis < N; ++axis)
            centers[i][axis] = numeric::truncate_to_int32(storage_.sum[axis][order_[i]]) /
                               static_cast<std::int32_t>(storage_.count[order_[i]]);
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
