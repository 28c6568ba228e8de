#include <algorithm>
#include <functional>
#include <utility>
#include <vela/gvm/fast/BySize.hpp>

namespace vela::gvm::fast {

void BySize::reset(std::size_t size, std::size_t nr_deltas) {
    keys_.resize(size);
    behind_ = before_ = middle_;
    sorted_ = false;
    nr_of_size_.resize(std::max(nr_of_size_.size(), nr_deltas + 1));
}

std::span<const Position> BySize::order(std::size_t nr_clusters) const {
    if (sorted_) return order_;
    work_.clear();
    for (Position c = 0; c < nr_clusters; ++c)
        work_.emplace_back(keys_[c], c);
    std::sort(work_.begin(), work_.end(), std::greater<>());
    order_.clear();
    for (const auto& [key, c] : work_)
        order_.push_back(c);
    sorted_ = true;
    return order_;
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
