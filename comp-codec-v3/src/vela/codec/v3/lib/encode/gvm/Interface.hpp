#pragma once

#include <vector>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode::gvm {

/// The clustering of one group's deltas, as the search for the number of centers sees it.
///
/// Cluster i is the same in all answers: index i in `ixs`, place i among the centers and sizes.
/// All answers are false before a successful `learn`.
class Interface {
public:
    virtual ~Interface() = default;

    /// Whether the implementation asked for exists.
    [[nodiscard]] virtual bool valid() const = 0;

    /// Makes at most `nr_centers` clusters.  With `allow_merge`, fewer than before are reached by
    /// merging what there is, without a new pass over the deltas.
    [[nodiscard]] virtual bool learn(unsigned nr_centers, bool allow_merge) = 0;

    /// Fills `ixs` of the group, in time order.
    [[nodiscard]] virtual bool get_ixs(Group& group) const = 0;

    /// Fills the centers of the group, their width and the bits of their section.
    [[nodiscard]] virtual bool get_centers(Group& group) const = 0;

    /// The width of the centers and the bits of their section, as `get_centers` leaves them,
    /// without the centers.
    [[nodiscard]] virtual bool measure_centers(Group& group) const = 0;

    /// Number of deltas per cluster.
    [[nodiscard]] virtual bool get_sizes(std::vector<unsigned>& sizes) const = 0;

    /// Sum of squared distances of the deltas from the means of their clusters.
    [[nodiscard]] virtual double cost() const = 0;
};

}  // namespace vela::codec::v3::encode::gvm
