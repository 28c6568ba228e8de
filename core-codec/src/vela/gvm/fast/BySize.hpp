#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>
#include <vela/gvm/fast/Storage.hpp>

namespace vela::gvm::fast {

/// The clusters by size, descending; equal sizes stay in the order in which they were reached.
///
/// Each position has a key: the size above, a stamp below.  A cluster that grows comes to stand
/// behind all others of its new size, so it takes a stamp below all given so far; one that shrinks
/// comes to stand before them.  While deltas are taken in nothing has to move: one store a delta.
class BySize {
public:
    /// Forgets all; `size` positions for clusters of at most `nr_deltas`.
    void reset(std::size_t size, std::size_t nr_deltas);

    /// The cluster is new, or has grown to `count`.
    void grow(Position c, std::int32_t count) {
        keys_[c] = key_(count) | --behind_;
        sorted_ = false;
    }

    /// The cluster is down to a single delta.  One that had no more keeps its place.
    void shrink_to_one(Position c) {
        if (keys_[c] >= key_(2)) keys_[c] = key_(1) | ++before_;
        sorted_ = false;
    }

    /// Whether `a` stands before `b`.
    [[nodiscard]] bool before(Position a, Position b) const { return keys_[a] > keys_[b]; }

    /// Positions [0, nr_clusters) in order, until the next change.
    [[nodiscard]] std::span<const Position> order(std::size_t nr_clusters) const;

    /// The sizes of positions [0, sizes.size()), descending.
    void get_sizes(std::span<unsigned> sizes) const;

private:
    static constexpr std::uint64_t middle_ = std::uint64_t{1} << 31;

    static std::uint64_t key_(std::int32_t count) {
        return static_cast<std::uint64_t>(count) << 32;
    }

    [[nodiscard]] std::size_t stamp_(Position c) const { return keys_[c] & 0xffffffff; }

    template <typename Put>
    void place_(std::span<const Position> positions, Put put) const;
    void sort_by_stamp_(std::size_t nr_clusters) const;

    std::vector<std::uint64_t> keys_;
    std::vector<Position> positions_;  // 0, 1, 2, ...
    std::uint64_t behind_ = middle_;
    std::uint64_t before_ = middle_;

    // Made when they are asked for.
    mutable bool sorted_ = false;
    mutable std::vector<Position> order_;
    mutable std::vector<Position> by_stamp_;
    mutable std::vector<std::uint64_t> is_borne_;     // a bit for each stamp, from the foremost on
    mutable std::vector<Position> bearer_;            // of each stamp
    mutable std::vector<unsigned> nr_of_size_ = {0};  // all 0 between calls
};

}  // namespace vela::gvm::fast
