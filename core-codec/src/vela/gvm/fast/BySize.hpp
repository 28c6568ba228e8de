#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>
#include <vela/gvm/fast/Storage.hpp>

namespace vela::gvm::fast {

/// The clusters by size, descending; equal sizes stay in the order in which they were reached.
///
/// Each position has a key: the size above, a stamp below.  A cluster that grows comes to stand
/// behind all others of its new size and takes a stamp below all given so far; one that shrinks
/// comes to stand before them.  So nothing has to move while deltas are taken in: a delta costs
/// one store, where an array of positions kept in order took ten times as long.
class BySize {
public:
    /// Forgets all; `size` positions.
    void reset(std::size_t size) {
        keys_.resize(size);
        behind_ = before_ = middle_;
    }

    /// The cluster is new, or has grown to `count`.
    void grow(Position c, std::int32_t count) { keys_[c] = key_(count) | --behind_; }

    /// The cluster is down to a single delta.  One that had no more keeps its place.
    void shrink_to_one(Position c) {
        if (keys_[c] >= key_(2)) keys_[c] = key_(1) | ++before_;
    }

    /// Whether `a` stands before `b`.
    [[nodiscard]] bool before(Position a, Position b) const { return keys_[a] > keys_[b]; }

    /// Brings `order`, which holds the positions in an earlier order, up to date.
    void sort(std::vector<Position>& order) const;

private:
    static constexpr std::uint64_t middle_ = std::uint64_t{1} << 31;

    static std::uint64_t key_(std::int32_t count) {
        return static_cast<std::uint64_t>(count) << 32;
    }

    std::vector<std::uint64_t> keys_;
    std::uint64_t behind_ = middle_;
    std::uint64_t before_ = middle_;
};

}  // namespace vela::gvm::fast
