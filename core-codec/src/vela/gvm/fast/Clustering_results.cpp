// What a clustering tells of its clusters.

#include <algorithm>
#include <bit>
#include <vela/gvm/fast/Clustering.hpp>
#include <vela/numeric/truncate.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::gvm::fast {

template <typename T, std::size_t N>
T Clustering<T, N>::cost() const {
    T sum = 0;
    for (Position c = 0; c < nr_clusters_; ++c)
        sum += storage_[c].cost;
    return sum;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::get_sizes(std::vector<unsigned>& sizes) const {
    if (sizes.size() != nr_clusters_) return false;
    by_size_.get_sizes(sizes);
    return true;
}

template <typename T, std::size_t N>
typename Clustering<T, N>::Center Clustering<T, N>::center_of_(const Cluster& cluster) {
    Center center;
    for (std::size_t axis = 0; axis < N; ++axis)
        center[axis] = numeric::truncate_to_int32(cluster.sum[axis]) / cluster.count;
    return center;
}

template <typename T, std::size_t N>
bool Clustering<T, N>::get_centers(std::vector<Center>& centers) const {
    if (centers.size() != nr_clusters_) return false;
    std::ranges::transform(by_size_.order(nr_clusters_), centers.begin(),
                           [this](Position c) { return center_of_(storage_[c]); });
    return true;
}

/// The shadows tell it, unless the largest mean lies close to a power of two or a sum may be beyond
/// 32 bits.
template <typename T, std::size_t N>
unsigned Clustering<T, N>::center_width() const {
    const double largest = storage_.largest_mean(nr_clusters_);
    const double from = largest * (1 - 0x1p-22);
    const double to = largest * (1 + 0x1p-22);
    if (to * static_cast<double>(nr_deltas_) < 0x1p31) {
        const auto width = std::bit_width(static_cast<std::uint32_t>(from));
        if (width == std::bit_width(static_cast<std::uint32_t>(to)))
            return static_cast<unsigned>(width);
    }
    return exact_center_width_();
}

template <typename T, std::size_t N>
unsigned Clustering<T, N>::exact_center_width_() const {
    std::uint32_t magnitudes = 0;
    for (Position c = 0; c < nr_clusters_; ++c)
        for (const int value : center_of_(storage_[c]))
            magnitudes |= static_cast<std::uint32_t>(numeric::wrap_abs(value));
    return static_cast<unsigned>(std::bit_width(magnitudes));
}

template <typename T, std::size_t N>
void Clustering<T, N>::get_permutation(std::vector<unsigned long>& ixs) const {
    ixs.resize(nr_clusters_);
    const auto order = by_size_.order(nr_clusters_);
    for (std::size_t i = 0; i < nr_clusters_; ++i)
        ixs[order[i]] = i;
}

template double Clustering<double, 1>::cost() const;
template bool Clustering<double, 1>::get_sizes(std::vector<unsigned>&) const;
template bool Clustering<double, 1>::get_centers(std::vector<Center>&) const;
template unsigned Clustering<double, 1>::center_width() const;
template void Clustering<double, 1>::get_permutation(std::vector<unsigned long>&) const;

template double Clustering<double, 2>::cost() const;
template bool Clustering<double, 2>::get_sizes(std::vector<unsigned>&) const;
template bool Clustering<double, 2>::get_centers(std::vector<Center>&) const;
template unsigned Clustering<double, 2>::center_width() const;
template void Clustering<double, 2>::get_permutation(std::vector<unsigned long>&) const;

}  // namespace vela::gvm::fast
