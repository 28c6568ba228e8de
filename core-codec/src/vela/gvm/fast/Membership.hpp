#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace vela::gvm::fast {

/// Which deltas belong to which storage position: a linked list of delta indices per position.
///
/// Lists are joined and moved in constant time; indices are written out once, at the end.
/// Every function gives false, and changes nothing, if an index is out of range.
class Membership {
public:
    Membership(std::size_t nr_deltas, std::size_t nr_positions);

    /// Appends a delta, which must not be in any list, to the list of a position.
    [[nodiscard]] bool assign(std::size_t delta_ix, std::size_t cluster_ix);

    /// Moves the list of `from` to `to`, whose own list must be empty unless the two are the same.
    [[nodiscard]] bool rename(std::size_t from, std::size_t to);

    /// Appends the list of `from` to the one of `to`, another position, and empties `from`.
    [[nodiscard]] bool append(std::size_t from, std::size_t to);

    /// Writes the position of each delta.  False unless there is one entry per delta; the entries
    /// of deltas that were never assigned are left alone.
    [[nodiscard]] bool get_ixs(std::vector<unsigned long>& ixs) const;

private:
    static constexpr unsigned long end_ = std::numeric_limits<unsigned long>::max();

    struct Info {
        unsigned long first = end_;
        unsigned long last = end_;
        [[nodiscard]] bool empty() const { return first == end_; }
    };

    std::vector<unsigned long> next_;  // per delta
    std::vector<Info> lists_;          // per position
};

}  // namespace vela::gvm::fast
