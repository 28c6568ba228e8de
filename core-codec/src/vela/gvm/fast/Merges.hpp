#pragma once

#include <array>
#include <cstddef>
#include <vector>
#include <vela/gvm/fast/BySize.hpp>
#include <vela/gvm/fast/Owners.hpp>
#include <vela/gvm/fast/Storage.hpp>
#include <vela/simd/Column.hpp>

namespace vela::gvm::fast {

/// The merges that clusters remember: each the cheapest with a cluster at a lower position.
///
///     position     0     1     2     3      one live cluster remembers one partner below itself;
///     partner      -     0     0     2      the pairs remembered are the only ones ever merged
///
/// Remembered merges are renewed lazily.  A change leaves a mark on a cluster; who asks for the
/// merge of a marked cluster, or of one whose partner is marked, has it searched again.  Marks live
/// until the next change only, so that a merge nobody asked for in between can stay behind the
/// truth.  This, every tie and every rounding show in the results, and are kept as they are.
template <typename T, std::size_t N>
class Merges {
public:
    /// `storage` and `by_size` must outlive this, and be up to date at each call.
    Merges(const Storage<T, N>& storage, const BySize& by_size)
        : storage_(storage), by_size_(by_size), sieve_(sieve::functions<N>()) {}

    /// Forgets all; `size` positions.
    void reset(std::size_t size, float slack);

    /// A cluster starts at the next position, which has no merge if it is the first.
    void start(Position c, Position partner, T cost);

    /// The cluster of the highest position is gone, and no one has it as partner.
    void drop(Position c);

    [[nodiscard]] Position partner(Position c) const { return partner_[c]; }

    /// Whether no mark is set.
    [[nodiscard]] bool settled() const { return marked_[0] == no_partner; }
    /// No remembered cost is below.
    [[nodiscard]] T bound() const { return lowest_; }
    /// The cluster that remembers the lowest cost of all, if that is below `cost`; else
    /// `no_partner`. Of equals, position 1 and then the largest.  REQUIRES: two clusters.
    [[nodiscard]] Position cheapest_below(T cost) {
        return cost <= lowest_ ? no_partner : find_below_(cost);
    }

    /// Searches again what a mark says is behind the truth.
    void renew();
    /// Likewise for position 1 and the clusters larger than `c`; for none of them if `c` is 0.  The
    /// marks are void after the change that follows.
    void renew_before(Position c);
    /// Searches the partner of `c`; of equals, the lowest position.
    void search(Position c);

    /// The cluster has grown by a delta or a cluster.  Renews the costs of the pairs that it is in;
    /// with `choose`, later clusters may take it as a new partner, and it is marked.
    void after_insert(Position c, bool choose);
    /// `a` absorbed what was at `b`, and `b` holds something else now.  Both are marked: who has
    /// one of them as partner keeps the cost of before until one of the two renewals above, which
    /// must come ahead of the next change.  Where it is known what a search would give `b`, `renew`
    /// can do without.
    void after_merge(Position a, Position b, Position partner_of_b = no_partner);

private:
    [[nodiscard]] Position find_below_(T cost);
    [[nodiscard]] bool stands_before_(Position a, Position b) const;
    [[nodiscard]] T cost_(Position owner, Position partner) const;
    void set_(Position c, Position partner, T cost);
    void put_cost_(Position c, T cost);
    void set_cost_(Position c, T cost);
    void offer_(Position c, Position partner);
    void offer_to_owners_();
    void offer_marked_(Position x);
    void gather_owners_(Position partner);
    void gather_marked_();

    const Storage<T, N>& storage_;
    const BySize& by_size_;
    const sieve::Functions<N>& sieve_;
    std::size_t size_ = 0;  // live clusters
    float slack_ = 0;

    simd::Column<Position> partner_;
    std::vector<T> cost_of_;
    simd::Column<float> shadow_of_cost_;

    Owners owners_;

    T lowest_ = 0;  // no remembered cost is below
    std::array<Position, 2> marked_{no_partner, no_partner};
    Position partner_of_b_ = no_partner;  // of the second, to be, if that is known
    bool owners_wait_ = false;            // for the offers of those marked

    std::vector<Position> found_;  // by the sieve
    std::vector<Position> work_;   // positions to be dealt with
};

}  // namespace vela::gvm::fast
