#pragma once

#include <array>
#include <cstddef>
#include <utility>
#include <vector>
#include <vela/Range.hpp>
#include <vela/gvm/ref/Cluster.hpp>
#include <vela/gvm/ref/MergeInfo.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::gvm::ref {

/// The plain learner, with the exact cost of every pair at hand; it defines what is learned.
///
/// The first deltas get a cluster each.  For every further one the cheaper is done: add it to the
/// nearest cluster, or merge the two clusters whose union costs least and give it the place that
/// falls free.  A delta as costly to add as the merge is added.
///
/// Functions answer as `api::Learner` tells, but the caller sizes the vectors: false if a size does
/// not match.  Which of two clusters of equal size comes first follows from `std::sort`.
template <typename Iterator>
class Learner {
public:
    using Element = typename Iterator::Element;
    using Center = std::array<int, Iterator::dimension>;

    Learner() = default;
    Learner(const Learner&) = delete;  // the list of clusters points into this object
    Learner& operator=(const Learner&) = delete;

    /// There is nothing to choose: the table of pairs is always exact.
    void set_update_all_after_insert(bool) {}

    /// False for no clusters, or fewer deltas than clusters.
    [[nodiscard]] bool learn(unsigned nr_clusters, const Range<Iterator>& range);

    /// A single cluster stays as it is, and that is no failure.
    [[nodiscard]] bool merge_two_clusters();

    [[nodiscard]] unsigned nr_clusters() const { return static_cast<unsigned>(metas_.size()); }
    [[nodiscard]] double cost() const;
    [[nodiscard]] bool get_sizes(std::vector<unsigned>& sizes) const;
    [[nodiscard]] bool get_centers(std::vector<Center>& centers) const;
    [[nodiscard]] bool get_ixs(std::vector<unsigned long>& ixs) const;

private:
    using Cluster = ref::Cluster<Element>;
    using Merge = typename MergeInfo<Element>::Merge;

    /// A cluster as the outside knows it: its index is its place in `metas_`.
    struct Meta {
        unsigned long first = 0;  // its deltas are chained by `next_`
        unsigned long last = 0;
        Cluster* cluster = nullptr;
    };

    [[nodiscard]] bool setup_(unsigned nr_clusters, const Range<Iterator>& range);
    [[nodiscard]] bool process_data_();
    [[nodiscard]] bool process_(unsigned long index);
    [[nodiscard]] Element delta_(std::size_t index) const;
    [[nodiscard]] std::pair<std::size_t, double> find_best_add_delta_(const Element& delta) const;
    [[nodiscard]] bool replace_(const Merge& merge, unsigned long index);
    [[nodiscard]] bool add_(std::size_t c, unsigned long index);
    [[nodiscard]] bool apply_(const Merge& merge);
    [[nodiscard]] Meta* find_meta_(const Cluster& cluster);
    void append_(Meta& to, unsigned long first, unsigned long last);
    [[nodiscard]] bool all_metas_point_at_clusters_() const;
    [[nodiscard]] bool sort_metas_();

    double exponent_ = 0.0;
    Range<Iterator> range_;  // not looked at after `learn`
    std::vector<Cluster> clusters_;
    MergeInfo<Element> merge_info_;
    std::vector<Meta> metas_;
    std::vector<unsigned long> next_;  // per delta: the next one of the same cluster
};

}  // namespace vela::gvm::ref
