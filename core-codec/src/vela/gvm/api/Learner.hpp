#pragma once

#include <array>
#include <vector>
#include <vela/Range.hpp>

namespace vela::gvm::api {

/// Replaces many deltas by few clusters, in one pass over the deltas.
///
/// A delta is an array of `Iterator::dimension` integers.  Clusters are numbered by size, the
/// largest first, so that small indices are the frequent ones; this is the one numbering that
/// `get_sizes`, `get_centers` and `get_ixs` share.  A delta is known by its place in the range.
///
/// Every `get_` function answers for the last good `learn` and the merges since.
/// The deltas must outlive the call of `learn` only.  A learner belongs to one thread.
template <typename T, typename Iterator>
class Learner {
public:
    using Center = std::array<int, Iterator::dimension>;

    virtual ~Learner() = default;

    /// Keeps remembered merge costs exact while deltas are taken in, at the price of time.
    /// To be set before `learn`; learners that are exact anyhow ignore it.
    virtual void set_update_all_after_insert(bool update_all) = 0;

    /// Starts afresh with the deltas of `range` and at most `nr_clusters` clusters.
    [[nodiscard]] virtual bool learn(unsigned nr_clusters, const Range<Iterator>& range) = 0;

    /// Merges the two clusters whose union costs least.  False without a good `learn`.
    [[nodiscard]] virtual bool merge_two_clusters() = 0;

    [[nodiscard]] virtual unsigned nr_clusters() const = 0;

    /// Sum of the squared distances of all deltas from the (real) means of their clusters.
    [[nodiscard]] virtual T cost() const = 0;

    /// Number of deltas of each cluster, descending.
    [[nodiscard]] virtual bool get_sizes(std::vector<unsigned>& sizes) const = 0;

    /// Mean of each cluster, cut to integers toward zero.
    [[nodiscard]] virtual bool get_centers(std::vector<Center>& centers) const = 0;

    /// `fixed_width::bit_width` of the centers, for those who do not need them in order.
    [[nodiscard]] virtual bool get_center_width(unsigned& bits) const = 0;

    /// Cluster of each delta.  False without a good `learn`.
    [[nodiscard]] virtual bool get_ixs(std::vector<unsigned long>& ixs) const = 0;
};

}  // namespace vela::gvm::api
