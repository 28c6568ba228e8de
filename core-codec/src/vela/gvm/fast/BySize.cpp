#include <algorithm>
#include <utility>
#include <vela/gvm/fast/BySize.hpp>

namespace vela::gvm::fast {

void BySize::reset(std::size_t size, std::size_t nr_deltas) {
    keys_.resize(size);
    behind_ = before_ = middle_;
    sorted_ = false;
    nr_of_size_.resize(std::max(nr_of_size_.size(), nr_deltas + 1));
}

/// Calls `put` with the place, the position and the size of each cluster; within a size, places go
/// by position.
template <typename Put>
void BySize::place_(std::size_t nr_clusters, Put put) const {
    std::size_t largest = 0;
    for (Position c = 0; c < nr_clusters; ++c) {
        const std::size_t size = keys_[c] >> 32;
        ++nr_of_size_[size];
        largest = std::max(largest, size);
    }
    unsigned first = 0;  // place of the first cluster of a size
    for (std::size_t size = largest; size > 0; --size)
        first += std::exchange(nr_of_size_[size], first);
    for (Position c = 0; c < nr_clusters; ++c) {
        const std::size_t size = keys_[c] >> 32;
        put(nr_of_size_[size]++, c, static_cast<unsigned>(size));
    }
    std::fill_n(nr_of_size_.begin(), largest + 1, 0u);
}

std::span<const Position> BySize::order(std::size_t nr_clusters) const {
    if (sorted_) return order_;
    order_.resize(nr_clusters);
    place_(nr_clusters, [this](std::size_t place, Position c, unsigned) { order_[place] = c; });
    for (std::size_t i = 1; i < nr_clusters; ++i) {
        const Position c = order_[i];
        std::size_t to = i;
        for (; to > 0 && before(c, order_[to - 1]); --to)
            order_[to] = order_[to - 1];
        order_[to] = c;
    }
    sorted_ = true;
    return order_;
}

void BySize::get_sizes(std::span<unsigned> sizes) const {
    place_(sizes.size(), [&](std::size_t place, Position, unsigned size) { sizes[place] = size; });
}

}  // namespace vela::gvm::fast
