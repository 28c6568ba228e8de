#include <algorithm>
#include <functional>
#include <utility>
#include <vela/gvm/fast/BySize.hpp>

namespace vela::gvm::fast {

void BySize::reset(std::size_t size, std::size_t nr_deltas) {
    keys_.resize(size);
    behind_ = before_ = middle_;
    sorted_ = false;
    order_.clear();
    nr_of_size_.resize(std::max(nr_of_size_.size(), nr_deltas + 1));
}

std::span<const Position> BySize::order(std::size_t nr_clusters) const {
    if (sorted_) return order_;
    if (order_.empty())
        sort_all_(nr_clusters);
    else
        sort_again_(nr_clusters);
    sorted_ = true;
    return order_;
}

void BySize::sort_all_(std::size_t nr_clusters) const {
    work_.clear();
    for (Position c = 0; c < nr_clusters; ++c)
        work_.emplace_back(keys_[c], c);
    std::sort(work_.begin(), work_.end(), std::greater<>());
    for (const auto& [key, c] : work_)
        order_.push_back(c);
}

/// A merge moves two clusters and drops one: the rest is in order already.
void BySize::sort_again_(std::size_t nr_clusters) const {
    std::erase_if(order_, [&](Position c) { return c >= nr_clusters; });
    for (std::size_t i = 1; i < order_.size(); ++i) {
        const Position c = order_[i];
        std::size_t to = i;
        for (; to > 0 && before(c, order_[to - 1]); --to)
            order_[to] = order_[to - 1];
        order_[to] = c;
    }
}

void BySize::get_sizes(std::span<unsigned> sizes) const {
    std::size_t largest = 0;
    for (std::size_t c = 0; c < sizes.size(); ++c) {
        const std::size_t size = keys_[c] >> 32;
        ++nr_of_size_[size];
        largest = std::max(largest, size);
    }
    unsigned first = 0;  // place of the first cluster of a size
    for (std::size_t size = largest; size > 0; --size)
        first += std::exchange(nr_of_size_[size], first);
    for (std::size_t c = 0; c < sizes.size(); ++c) {
        const std::size_t size = keys_[c] >> 32;
        sizes[nr_of_size_[size]++] = static_cast<unsigned>(size);
    }
    std::fill_n(nr_of_size_.begin(), largest + 1, 0u);
}

}  // namespace vela::gvm::fast
