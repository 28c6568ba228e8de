#include <algorithm>
#include <limits>
#include <vela/gvm/fast/Merges.hpp>

namespace vela::gvm::fast {

namespace {

constexpr auto nothing = std::numeric_limits<double>::infinity();

template <typename T, std::size_t N>
costs::Fixed<N> fixed(const Cluster<T, N>& cluster) {
    costs::Fixed<N> fixed{{}, cluster.sum_sq, static_cast<double>(cluster.count), cluster.cost};
    for (std::size_t i = 0; i < N; ++i)
        fixed.sum[i] = cluster.sum[i];
    return fixed;
}

template <std::size_t N>
sieve::Shadow<N> shadow(const sieve::Columns<N>& columns, Position at) {
    sieve::Shadow<N> shadow{{}, columns.inverse[at]};
    for (std::size_t i = 0; i < N; ++i)
        shadow.mean[i] = columns.mean[i][at];
    return shadow;
}

}  // namespace

template <typename T, std::size_t N>
void Merges<T, N>::reset(std::size_t size, float slack) {
    size_ = 0;
    slack_ = slack;
    partner_.assign(size, no_partner);
    cost_of_.assign(size + costs::padding, nothing);
    shadow_of_cost_.assign(size + sieve::padding, 0);
    first_owner_.assign(size, no_partner);
    next_owner_.resize(size);
    previous_owner_.resize(size);
    lowest_ = nothing;
    lowest_is_exact_ = true;
    marked_.fill(no_partner);
    work_.resize(size + sieve::padding);
    exact_costs_.resize(size + costs::padding);
}

template <typename T, std::size_t N>
void Merges<T, N>::start(Position c, Position partner, T cost) {
    ++size_;
    if (partner != no_partner) set_(c, partner, cost);
}

template <typename T, std::size_t N>
void Merges<T, N>::drop(Position c) {
    --size_;
    unlink_(c);
    set_cost_(c, nothing);
}

template <typename T, std::size_t N>
T Merges<T, N>::lowest() {
    if (!lowest_is_exact_) {
        lowest_ = costs::functions<N>().lowest(cost_of_.data(), 1, size_).value;
        lowest_is_exact_ = true;
    }
    return lowest_;
}

template <typename T, std::size_t N>
Position Merges<T, N>::cheapest() {
    const T cost = lowest();
    if (cost_of_[1] == cost) return 1;
    Position best = no_partner;
    for (Position c = 2; c < size_; ++c)
        if (cost_of_[c] == cost && (best == no_partner || by_size_.before(c, best))) best = c;
    return best;
}

template <typename T, std::size_t N>
void Merges<T, N>::renew() {
    if (marked_[0] == no_partner) return;
    gather_marked_();
    for (const Position c : work_)
        search(c);
}

template <typename T, std::size_t N>
void Merges<T, N>::renew_before(Position c) {
    if (marked_[0] == no_partner) return;
    gather_marked_();
    for (const Position x : work_)
        if (x == 1 || by_size_.before(x, c)) search(x);
}

template <typename T, std::size_t N>
void Merges<T, N>::search(Position c) {
    Position best = sieve::functions<N>().partner(storage_.shadows(), c, slack_);
    if (best != sieve::several) return set_(c, best, cost_(c, best));

    costs::functions<N>().as_owner(exact_costs_.data(), storage_.columns(), 0, c,
                                   fixed(storage_.load(c)));
    const T lowest = costs::functions<N>().lowest(exact_costs_.data(), 0, c).value;
    best = static_cast<Position>(std::find(exact_costs_.begin(), exact_costs_.end(), lowest) -
                                 exact_costs_.begin());
    set_(c, best, exact_costs_[best]);
}

template <typename T, std::size_t N>
void Merges<T, N>::after_insert(Position c, bool choose) {
    if (choose) {
        after_merge(c, c);
        return;
    }
    if (partner_[c] != no_partner) set_cost_(c, cost_(c, partner_[c]));
    for (Position x = first_owner_[c]; x != no_partner; x = next_owner_[x])
        set_cost_(x, cost_(x, c));
    marked_.fill(no_partner);
}

template <typename T, std::size_t N>
void Merges<T, N>::after_merge(Position a, Position b) {
    const auto columns = storage_.shadows();
    work_.resize(size_);
    const std::size_t nr_cheaper =
        sieve::functions<N>().cheaper(work_.data(), columns, shadow_of_cost_.data(), a + 1, size_,
                                      shadow(columns, a), shadow(columns, b), slack_);
    work_.resize(nr_cheaper);
    // Owners of merges with `a` or `b` are dealt with apart: their costs can also rise.
    std::erase_if(work_, [&](Position x) { return partner_[x] == a || partner_[x] == b; });
    gather_owners_(a);
    if (b != a) gather_owners_(b);
    for (const Position x : work_) {
        offer_(x, a);
        if (x > b) offer_(x, b);
    }
    marked_ = {a, b};
}

/// Renews the merge of `c` if it is with `partner`, or makes it so if that is cheaper.
template <typename T, std::size_t N>
void Merges<T, N>::offer_(Position c, Position partner) {
    const T cost = cost_(c, partner);
    if (partner_[c] == partner)
        set_cost_(c, cost);
    else if (cost_of_[c] > cost)
        set_(c, partner, cost);
}

template <typename T, std::size_t N>
T Merges<T, N>::cost_(Position owner, Position partner) const {
    T cost;
    storage_.load(owner).merge_delta(cost, storage_.load(partner));
    return cost;
}

template <typename T, std::size_t N>
void Merges<T, N>::set_(Position c, Position partner, T cost) {
    if (partner_[c] != partner) {
        unlink_(c);
        link_(c, partner);
    }
    set_cost_(c, cost);
}

template <typename T, std::size_t N>
void Merges<T, N>::set_cost_(Position c, T cost) {
    if (cost_of_[c] == lowest_) lowest_is_exact_ = false;
    cost_of_[c] = cost;
    shadow_of_cost_[c] = static_cast<float>(cost);
    if (cost < lowest_) {
        lowest_ = cost;
        lowest_is_exact_ = true;
    }
}

template <typename T, std::size_t N>
void Merges<T, N>::link_(Position c, Position partner) {
    const Position next = first_owner_[partner];
    partner_[c] = partner;
    previous_owner_[c] = no_partner;
    next_owner_[c] = next;
    if (next != no_partner) previous_owner_[next] = c;
    first_owner_[partner] = c;
}

template <typename T, std::size_t N>
void Merges<T, N>::unlink_(Position c) {
    if (partner_[c] == no_partner) return;
    const Position next = next_owner_[c];
    const Position previous = previous_owner_[c];
    (previous == no_partner ? first_owner_[partner_[c]] : next_owner_[previous]) = next;
    if (next != no_partner) previous_owner_[next] = previous;
    partner_[c] = no_partner;
}

template <typename T, std::size_t N>
void Merges<T, N>::gather_owners_(Position partner) {
    for (Position x = first_owner_[partner]; x != no_partner; x = next_owner_[x])
        work_.push_back(x);
}

/// All whose merge is with a marked cluster or their own mark says so, once each.
template <typename T, std::size_t N>
void Merges<T, N>::gather_marked_() {
    const auto [a, b] = marked_;
    work_.clear();
    gather_owners_(a);
    if (b != a) gather_owners_(b);
    if (a != 0) work_.push_back(a);
    if (b != a && partner_[b] != a) work_.push_back(b);
}

template class Merges<double, 1>;
template class Merges<double, 2>;

}  // namespace vela::gvm::fast
