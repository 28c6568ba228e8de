#include <algorithm>
#include <limits>
#include <vela/gvm/fast/Merges.hpp>

namespace vela::gvm::fast {

namespace {

constexpr auto nothing = std::numeric_limits<float>::infinity();

template <std::size_t N>
sieve::Shadow<N> shadow(const sieve::Columns<N>& columns, Position at) {
    sieve::Shadow<N> shadow{{}, columns.inverse[at], at};
    for (std::size_t i = 0; i < N; ++i)
        shadow.mean[i] = columns.mean[i][at];
    return shadow;
}

}  // namespace

template <typename T, std::size_t N>
void Merges<T, N>::reset(std::size_t size, float slack) {
    size_ = 0;
    slack_ = slack;
    partner_.assign(size + sieve::padding, no_partner);
    cost_of_.assign(size + 1, nothing);  // and that of nobody
    shadow_of_cost_.assign(size + sieve::padding, nothing);
    owners_.reset(size);
    lowest_ = nothing;
    marked_.fill(no_partner);
    owners_wait_ = false;
    found_.resize(size + sieve::padding);
    work_.reserve(2 * size);
}

template <typename T, std::size_t N>
void Merges<T, N>::start(Position c, Position partner, T cost) {
    ++size_;
    if (partner != no_partner) set_(c, partner, cost);
}

template <typename T, std::size_t N>
void Merges<T, N>::drop(Position c) {
    --size_;
    owners_.leave(c);
    set_cost_(c, nothing);
}

/// Rounding to single precision keeps the order, so that the lowest cost has the lowest shadow.
template <typename T, std::size_t N>
Position Merges<T, N>::find_below_(T cost) {
    const std::size_t nr_found = sieve_.lowest(found_.data(), shadow_of_cost_.data(), size_);
    Position best = found_[0];
    for (std::size_t i = 1; i < nr_found; ++i)
        if (stands_before_(found_[i], best)) best = found_[i];
    lowest_ = cost_of_[best];
    return lowest_ < cost ? best : no_partner;
}

template <typename T, std::size_t N>
bool Merges<T, N>::stands_before_(Position a, Position b) const {
    if (cost_of_[a] != cost_of_[b]) return cost_of_[a] < cost_of_[b];
    return b != 1 && by_size_.before(a, b);
}

template <typename T, std::size_t N>
void Merges<T, N>::renew() {
    owners_wait_ = false;  // all of them are searched again
    if (marked_[0] == no_partner) return;
    const Position b = marked_[1];
    if (partner_of_b_ != no_partner) set_(b, partner_of_b_, cost_(b, partner_of_b_));
    gather_marked_();
    for (const Position c : work_)
        search(c);
}

template <typename T, std::size_t N>
void Merges<T, N>::renew_before(Position c) {
    if (owners_wait_) offer_to_owners_();
    if (c == 0 || marked_[0] == no_partner) return;
    gather_marked_();
    for (const Position x : work_)
        if (x == 1 || by_size_.before(x, c)) search(x);
}

template <typename T, std::size_t N>
void Merges<T, N>::search(Position c) {
    const auto [position, limit] = sieve_.partner(storage_.shadows(), c, slack_);
    if (position != sieve::several) return set_(c, position, cost_(c, position));

    const std::size_t nr_found = sieve_.all_partners(found_.data(), storage_.shadows(), c, limit);
    Position best = found_[0];
    T lowest = cost_(c, best);
    for (std::size_t i = 1; i < nr_found; ++i) {
        const T cost = cost_(c, found_[i]);
        if (cost < lowest) {
            best = found_[i];
            lowest = cost;
        }
    }
    set_(c, best, lowest);
}

template <typename T, std::size_t N>
void Merges<T, N>::after_insert(Position c, bool choose) {
    if (choose) {
        after_merge(c, c);
        return;
    }
    T lowest = lowest_;
    const auto renew = [&](Position owner, Position partner) {
        const T cost = cost_(owner, partner);
        put_cost_(owner, cost);
        lowest = std::min(lowest, cost);
    };
    if (partner_[c] != no_partner) renew(c, partner_[c]);
    owners_.for_each_and_nobody(c, [&](Position x) { renew(x, c); });
    lowest_ = lowest;
    marked_.fill(no_partner);
}

template <typename T, std::size_t N>
void Merges<T, N>::after_merge(Position a, Position b, Position partner_of_b) {
    const auto columns = storage_.shadows();
    const std::size_t nr_found =
        sieve_.cheaper(found_.data(), columns, {shadow_of_cost_.data(), partner_.data()}, a + 1,
                       size_, shadow(columns, a), shadow(columns, b), slack_);
    marked_ = {a, b};
    partner_of_b_ = partner_of_b;
    for (std::size_t i = 0; i < nr_found; ++i)
        offer_marked_(found_[i]);
    // Those of owners can also rise.  Mostly `renew` comes next, which searches owners anew.
    owners_wait_ = true;
}

/// Some who have become owners since get once more what they have.
template <typename T, std::size_t N>
void Merges<T, N>::offer_to_owners_() {
    owners_wait_ = false;
    work_.clear();
    gather_owners_(marked_[0]);
    if (marked_[1] != marked_[0]) gather_owners_(marked_[1]);
    for (const Position x : work_)
        offer_marked_(x);
}

template <typename T, std::size_t N>
void Merges<T, N>::offer_marked_(Position x) {
    const auto [a, b] = marked_;
    offer_(x, a);
    if (b != a && x > b) offer_(x, b);
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
    storage_[owner].merge_delta(cost, storage_[partner]);
    return cost;
}

template <typename T, std::size_t N>
void Merges<T, N>::set_(Position c, Position partner, T cost) {
    partner_[c] = partner;
    owners_.join(c, partner);
    set_cost_(c, cost);
}

template <typename T, std::size_t N>
void Merges<T, N>::put_cost_(Position c, T cost) {
    cost_of_[c] = cost;
    shadow_of_cost_[c] = static_cast<float>(cost);
}

template <typename T, std::size_t N>
void Merges<T, N>::set_cost_(Position c, T cost) {
    put_cost_(c, cost);
    lowest_ = std::min(lowest_, cost);
}

template <typename T, std::size_t N>
void Merges<T, N>::gather_owners_(Position partner) {
    owners_.for_each(partner, [&](Position x) { work_.push_back(x); });
}

/// All whose merge is with a marked cluster or their own mark says so, once each; but not who has
/// been given what a search would find.
template <typename T, std::size_t N>
void Merges<T, N>::gather_marked_() {
    const auto [a, b] = marked_;
    work_.clear();
    gather_owners_(a);
    if (b != a) gather_owners_(b);
    if (a != 0) work_.push_back(a);
    if (b != a && partner_[b] != a && partner_[b] != partner_of_b_) work_.push_back(b);
}

template class Merges<double, 1>;
template class Merges<double, 2>;

}  // namespace vela::gvm::fast
