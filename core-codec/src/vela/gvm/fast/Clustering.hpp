#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>
#include <vela/Range.hpp>
#include <vela/gvm/fast/BySize.hpp>
#include <vela/gvm/fast/Cluster.hpp>
#include <vela/gvm/fast/Membership.hpp>
#include <vela/gvm/fast/Merges.hpp>
#include <vela/gvm/fast/Storage.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::gvm::fast {

/// Clusters deltas as they come, and merges clusters afterwards.
///
/// Live clusters fill the storage from position 0 on.  Each remembers a merge (see `Merges`), and
/// their order by size (see `BySize`) gives the indices that the outside sees.
///
/// Where the time goes: for each delta the nearest cluster is wanted, and there are 150.  The sieve
/// looks at all of them for several deltas at once, and mostly names the only one that matters; its
/// cost is computed exactly.  What changes between the look and the use of it is looked at again.
/// 1024 shuffled deltas of music with 150 clusters: 470 us as plain code, 69 us like this with
/// AVX2; with two coordinates 625 us and 94 us.  Clusters sorted by mean, of which a few around the
/// delta are looked at, were no faster with AVX2, and serve one coordinate only.
template <typename T, std::size_t N>
class Clustering {
public:
    using Iterator = segment::Iterator<N, int>;
    using Center = std::array<int, N>;

    Clustering() : merges_(storage_, by_size_), sieve_(sieve::functions<N>()) {}
    Clustering(const Clustering&) = delete;
    Clustering& operator=(const Clustering&) = delete;

    /// Takes in all deltas in order, starting afresh, and writes down where each went.
    ///
    /// Without `update_all_after_insert` a delta that joins a cluster renews the remembered costs
    /// of the pairs that this cluster is in, but no cluster chooses another partner.
    /// False for a capacity of 0 (unless there are no deltas) or a membership too small.
    [[nodiscard]] bool process_data(const Range<Iterator>& range, std::size_t capacity,
                                    bool update_all_after_insert, Membership& membership);

    /// Merges the cheapest remembered pair.  False if fewer than 2 clusters are left.
    [[nodiscard]] bool merge_(Membership& membership);

    [[nodiscard]] std::size_t nr_clusters() const { return nr_clusters_; }
    [[nodiscard]] T cost() const;

    /// False unless the vector has an entry for each cluster.
    [[nodiscard]] bool get_sizes(std::vector<unsigned>& sizes) const;

    /// The sum is cut to 32 bits before it is divided, so that one beyond them gives a center of
    /// the smallest integer over the count.  False unless the vector fits, as above.
    [[nodiscard]] bool get_centers(std::vector<Center>& centers) const;

    /// Bits of the largest magnitude among the centers, 0 if there is none.  A search for the
    /// number of clusters asks for it at every step; sorting them would take five times as long.
    [[nodiscard]] unsigned center_width() const;

    /// Maps storage positions to output indices.
    void get_permutation(std::vector<unsigned long>& ixs) const;

private:
    using Cluster = fast::Cluster<T, N>;

    [[nodiscard]] static Center center_of_(const Cluster& cluster);
    [[nodiscard]] unsigned exact_center_width_() const;

    struct Delta {
        Cluster alone;
        std::size_t index;
        std::size_t at;  // in the batch
    };

    /// The cluster that a delta can be added to at the lowest cost.
    struct Nearest {
        Position at;
        T cost;
        T share;  // see `Cluster::united_share`
        T limit;  // not below the cost, and often known long before
    };

    void reset_(const Range<Iterator>& range, std::size_t capacity, bool update_all_after_insert);
    [[nodiscard]] bool process_batch_(const Range<Iterator>& range, std::size_t first,
                                      Membership& membership);
    [[nodiscard]] bool process_first_(const Delta& delta, Membership& membership);
    [[nodiscard]] bool process_second_(const Delta& delta, Membership& membership);
    [[nodiscard]] bool process_next_(const Delta& delta, Membership& membership);
    [[nodiscard]] bool add_to_(const Nearest& nearest, const Delta& delta, Membership& membership);

    void note_change_(Position c);
    [[nodiscard]] Nearest find_nearest_(const Delta& delta);
    [[nodiscard]] Nearest find_nearest_of_all_(const Delta& delta);
    [[nodiscard]] Nearest adding_to_(Position c, const Cluster& delta) const;
    [[nodiscard]] bool is_hit_(const Nearest& nearest) const;
    [[nodiscard]] Position partner_of_started_(const Delta& delta, Position at) const;

    // The four ways on for a delta: a free position, a cluster, or the position that a merge frees.
    void start_(const Cluster& delta, Position partner, T partner_delta);
    void insert_(const Nearest& nearest, const Cluster& delta);
    [[nodiscard]] bool merge_and_start_(Position x, const Delta& delta, Membership& membership);
    void absorb_(Position p, Position x);

    Storage<T, N> storage_;
    BySize by_size_;
    Merges<T, N> merges_;
    const sieve::Functions<N>& sieve_;
    std::size_t nr_clusters_ = 0;
    std::size_t capacity_ = 0;
    std::size_t nr_deltas_ = 0;
    bool update_all_after_insert_ = false;
    float slack_ = 0;
    std::vector<Position> found_;  // by the sieve

    sieve::Batch<N> batch_{};
    std::array<std::uint32_t, sieve::batch> overtaken_{};  // all ones: by a change since
};

}  // namespace vela::gvm::fast
