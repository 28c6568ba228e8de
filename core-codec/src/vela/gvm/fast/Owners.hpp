#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>
#include <vela/gvm/fast/Storage.hpp>

namespace vela::gvm::fast {

/// Which clusters have a cluster as their partner.
///
/// A ring per partner through all its owners and back to itself: to leave one and to join another
/// takes no branch, which could not be foretold.
class Owners {
public:
    /// Nobody owns anything; `size` positions.
    void reset(std::size_t size) {
        size_ = size;
        next_.resize(2 * size);
        previous_.resize(2 * size);
        std::iota(next_.begin(), next_.end(), Position{0});
        std::iota(previous_.begin(), previous_.end(), Position{0});
    }

    /// `c` becomes an owner of `partner`, and leaves the one that it had.
    void join(Position c, Position partner) {
        leave(c);
        const std::size_t head = size_ + partner;
        const Position next = next_[head];
        next_[head] = c;
        previous_[c] = static_cast<Position>(head);
        next_[c] = next;
        previous_[next] = c;
    }

    /// `c` has no partner any more.
    void leave(Position c) {
        next_[previous_[c]] = next_[c];
        previous_[next_[c]] = previous_[c];
        next_[c] = previous_[c] = c;
    }

    /// Calls `visit` with each owner of `partner`; it must not change who owns what.
    template <typename Visit>
    void for_each(Position partner, Visit visit) const {
        visit_from_(next_[size_ + partner], visit);
    }

    /// Likewise, but at least twice, with position `size` for each owner that is missing.  Where
    /// one or two are the rule and their number cannot be foretold, this is faster.
    template <typename Visit>
    void for_each_and_nobody(Position partner, Visit visit) const {
        const auto nobody = static_cast<Position>(size_);
        const Position first = next_[size_ + partner];
        const Position second = next_[first];
        visit(std::min(first, nobody));
        visit(std::min(second, nobody));
        if (second < size_) visit_from_(next_[second], visit);
    }

private:
    template <typename Visit>
    void visit_from_(Position x, Visit visit) const {
        for (; x < size_; x = next_[x])
            visit(x);
    }

    std::size_t size_ = 0;
    std::vector<Position> next_;  // of each owner, and then of each partner
    std::vector<Position> previous_;
};

}  // namespace vela::gvm::fast
