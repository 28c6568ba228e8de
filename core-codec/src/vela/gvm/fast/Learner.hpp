#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>
#include <vela/Range.hpp>
#include <vela/gvm/fast/Clustering.hpp>
#include <vela/gvm/fast/Membership.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::gvm::fast {

/// The learner used by default: one remembered merge per cluster instead of a table of all pairs.
///
/// Unlike `ref::Learner` it starts a cluster only for a delta that lies on no center yet, and takes
/// fewer deltas than clusters.  Functions answer as `api::Learner` tells, but the caller sizes the
/// vectors: false if a size does not match or nothing was learned yet.
/// Memory is kept from one `learn` to the next, and by the thread from one learner to the next: a
/// frame has dozens of them, and each would allocate two dozen times.
template <typename T, typename Iterator>
class Learner {
public:
    using Center = std::array<int, Iterator::dimension>;

    Learner() = default;
    Learner(const Learner&) = delete;
    Learner& operator=(const Learner&) = delete;
    ~Learner();

    /// True at first.  Takes effect with the next `learn`.
    void set_update_all_after_insert(bool update_all) { update_all_after_insert_ = update_all; }

    /// False only for `nr_clusters` 0 with deltas to learn.
    [[nodiscard]] bool learn(unsigned nr_clusters, const Range<Iterator>& range);
    [[nodiscard]] bool merge_two_clusters();

    [[nodiscard]] unsigned nr_clusters() const;
    [[nodiscard]] T cost() const;
    [[nodiscard]] bool get_sizes(std::vector<unsigned>& sizes) const;
    [[nodiscard]] bool get_centers(std::vector<Center>& centers) const;
    [[nodiscard]] bool get_center_width(unsigned& bits) const;
    [[nodiscard]] bool get_ixs(std::vector<unsigned long>& ixs) const;

private:
    struct Info {
        Clustering<T, Iterator::dimension> clustering;
        Membership membership;
        std::vector<unsigned long> name_of_position;
    };

    /// The memory of a learner of this thread that is gone, if it was not taken since.
    static std::unique_ptr<Info>& spare_();

    bool update_all_after_insert_ = true;
    bool complete_ = false;       // no delta was left out
    std::unique_ptr<Info> info_;  // there was a `learn`, good or not
};

}  // namespace vela::gvm::fast
