#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>
#include <vela/gvm/fast/BySize.hpp>

namespace vela::gvm::fast {

void BySize::reset(std::size_t size, std::size_t nr_deltas) {
    keys_.resize(size);
    positions_.resize(size);
    std::iota(positions_.begin(), positions_.end(), Position{0});
    behind_ = before_ = middle_;
    sorted_ = false;
    nr_of_size_.resize(std::max(nr_of_size_.size(), nr_deltas + 1));
}

/// Calls `put` with the place, the position and the size of each cluster; within a size, places go
/// by the order in which the positions are given.
template <typename Put>
void BySize::place_(std::span<const Position> positions, Put put) const {
    std::size_t largest = 0;
    for (const Position c : positions) {
        const std::size_t size = keys_[c] >> 32;
        ++nr_of_size_[size];
        largest = std::max(largest, size);
    }
    unsigned first = 0;  // place of the first cluster of a size
    for (std::size_t size = largest; size > 0; --size)
        first += std::exchange(nr_of_size_[size], first);
    for (const Position c : positions) {
        const std::size_t size = keys_[c] >> 32;
        put(nr_of_size_[size]++, c, static_cast<unsigned>(size));
    }
    std::fill_n(nr_of_size_.begin(), largest + 1, 0u);
}

std::span<const Position> BySize::order(std::size_t nr_clusters) const {
    if (sorted_) return order_;
    sort_by_stamp_(nr_clusters);
    order_.resize(nr_clusters);
    place_(by_stamp_, [this](std::size_t place, Position c, unsigned) { order_[place] = c; });
    sorted_ = true;
    return order_;
}

/// Each stamp is given once, and there are about as many as deltas: with a bit for each they need
/// not be compared, which nobody could foretell.
void BySize::sort_by_stamp_(std::size_t nr_clusters) const {
    const std::size_t nr_stamps = before_ - behind_ + 1;
    is_borne_.assign(nr_stamps / 64 + 1, 0);
    bearer_.resize(nr_stamps);
    for (Position c = 0; c < nr_clusters; ++c) {
        const std::size_t stamp = before_ - stamp_(c);
        is_borne_[stamp / 64] |= std::uint64_t{1} << stamp % 64;
        bearer_[stamp] = c;
    }
    by_stamp_.clear();
    for (std::size_t word = 0; word < is_borne_.size(); ++word)
        for (std::uint64_t bits = is_borne_[word]; bits != 0; bits &= bits - 1)
            by_stamp_.push_back(bearer_[64 * word + static_cast<unsigned>(std::countr_zero(bits))]);
}

void BySize::get_sizes(std::span<unsigned> sizes) const {
    place_(std::span(positions_).first(sizes.size()),
           [&](std::size_t place, Position, unsigned size) { sizes[place] = size; });
}

}  // namespace vela::gvm::fast
