#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace vela::gvm::fast {

/// Which deltas belong to which storage position.
///
/// Each delta holds the number of the list that it was put in, and each position the number of its
/// list.  To append a list is to note the two numbers; which delta is where is resolved once, when
/// it is asked for.
/// Every function gives false, and changes nothing, if an index is out of range.
class Membership {
public:
    Membership() = default;
    Membership(std::size_t nr_deltas, std::size_t nr_positions) { reset(nr_deltas, nr_positions); }

    /// Forgets all.
    void reset(std::size_t nr_deltas, std::size_t nr_positions);

    /// Appends a delta, which must not be in any list, to the list of a position.
    [[nodiscard]] bool assign(std::size_t delta_ix, std::size_t cluster_ix);

    /// Moves the list of `from` to `to`, whose own list must be empty unless the two are the same.
    [[nodiscard]] bool rename(std::size_t from, std::size_t to);

    /// Appends the list of `from` to the one of `to`, another position, and empties `from`.
    [[nodiscard]] bool append(std::size_t from, std::size_t to);

    /// Writes the position of each delta, or what `names` holds for the position.  False unless
    /// there is one entry per delta; the entries of deltas that were never assigned are left alone.
    [[nodiscard]] bool get_ixs(std::vector<unsigned long>& ixs) const;
    [[nodiscard]] bool get_ixs(std::vector<unsigned long>& ixs,
                               const std::vector<unsigned long>& names) const;

private:
    using List = std::uint32_t;
    static constexpr List none_ = std::numeric_limits<List>::max();

    std::vector<List> list_of_delta_;
    std::vector<List> list_at_;                    // per position
    std::vector<std::pair<List, List>> appended_;  // from, to; in the order of the events
    List nr_lists_ = 0;
    mutable std::vector<unsigned long> name_of_list_;
};

}  // namespace vela::gvm::fast
