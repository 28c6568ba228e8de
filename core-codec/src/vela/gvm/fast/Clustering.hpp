#pragma once

#include <array>
#include <cstddef>
#include <vector>
#include <vela/Range.hpp>
#include <vela/gvm/fast/Cluster.hpp>
#include <vela/gvm/fast/Membership.hpp>
#include <vela/gvm/fast/Storage.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::gvm::fast {

/// Clusters deltas as they come, and merges clusters afterwards.
///
/// Live clusters fill the storage from position 0 on.  Beside its sums each remembers the cheapest
/// merge with a cluster at a lower position:
///
///     position     0     1     2     3      one live cluster remembers one partner below itself;
///     best_merge   -     0     0     2      the pairs remembered are the only ones ever merged
///
/// Remembered merges are renewed lazily.  A change leaves a mark, `dirty`, on the cluster; who asks
/// for the merge of a marked cluster, or of one whose partner is marked, has it searched again.
/// Marks live until the next change only, so that a merge nobody asked for in between can stay
/// behind the truth.  This, every tie and every rounding show in the results, and are kept as
/// they are.
///
/// `order` lists the live clusters by size, descending; equal sizes stay in the order in which they
/// were reached.  Places in `order` are the indices that the outside sees.
template <typename T, std::size_t N>
class Clustering {
public:
    using Iterator = segment::Iterator<N, int>;
    using Center = std::array<int, N>;

    /// Without `update_all_after_insert` a delta that joins a cluster renews the remembered costs
    /// of the pairs that this cluster is in, but no cluster chooses another partner.
    Clustering(std::size_t capacity, bool update_all_after_insert);

    /// Takes in all deltas in order, and writes down where each went.
    /// False for a capacity of 0 (unless there are no deltas) or a membership too small.
    [[nodiscard]] bool process_data(const Range<Iterator>& range, Membership& membership);

    /// Merges the cheapest remembered pair.  False if fewer than 2 clusters are left.
    [[nodiscard]] bool merge_(Membership& membership);

    [[nodiscard]] std::size_t nr_clusters() const { return nr_clusters_; }
    [[nodiscard]] T cost() const;

    /// False unless the vector has an entry for each cluster.
    [[nodiscard]] bool get_sizes(std::vector<unsigned>& sizes) const;

    /// The sum is cut to 32 bits before it is divided, so that one beyond them gives a center of
    /// the smallest integer over the count.  False unless the vector fits, as above.
    [[nodiscard]] bool get_centers(std::vector<Center>& centers) const;

    /// Maps storage positions to output indices.
    void get_permutation(std::vector<unsigned long>& ixs) const;

private:
    using Cluster = fast::Cluster<T, N>;

    [[nodiscard]] bool process_(const Cluster& delta, Membership& membership, std::size_t index);
    [[nodiscard]] bool process_first_(const Cluster& delta, Membership& membership,
                                      std::size_t index);
    [[nodiscard]] bool process_second_(const Cluster& delta, Membership& membership,
                                       std::size_t index);
    [[nodiscard]] bool process_next_(const Cluster& delta, Membership& membership,
                                     std::size_t index);

    // The four ways on for a delta: a free position, a cluster, or the position that a merge frees.
    void start_(const Cluster& delta, Position partner, T partner_delta);
    void insert_(Position c, const Cluster& delta);
    [[nodiscard]] bool merge_and_start_(Position x, const Cluster& delta, Membership& membership);
    void absorb_(Position p, Position x);

    [[nodiscard]] T add_cost_(Position c, const Cluster& delta) const;
    [[nodiscard]] T merge_cost_(Position owner, Position partner) const;
    void compute_add_costs_(const Cluster& delta);
    [[nodiscard]] Position find_exact_hit_();
    [[nodiscard]] Position first_by_size_(const std::vector<T>& values, T value,
                                          Position preferred);

    Position goc_best_merge_(Position c);
    void find_best_merge_for_(Position c);
    void renew_merges_();
    [[nodiscard]] T lowest_merge_() const;
    void offer_(Position x, Position partner, T delta);
    void update_after_insert_(Position c);
    void update_after_merge_(Position a, Position b);
    void mark_(Position c);
    void clear_dirty_();

    void bubble_up_(Position c);
    void bubble_down_(Position c);
    void move_last_to_(Position x);

    void swap_places_(std::size_t i, std::size_t j);

    std::vector<Position> order_;     // as long as the capacity; live clusters first
    std::vector<std::size_t> place_;  // of each position in `order`
    std::size_t nr_clusters_ = 0;
    Storage<T, N> storage_;
    bool any_dirty_ = false;
    bool update_all_after_insert_;
    std::size_t capacity_;
    std::vector<T> costs_;        // of the search in work, by position
    std::vector<T> other_costs_;  // of a second cluster
};

}  // namespace vela::gvm::fast
