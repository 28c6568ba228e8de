#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <span>
#include <vela/gvm/fast/Storage.hpp>
#include <vela/simd/widest.hpp>

namespace vela::gvm::fast {

namespace {

// Magnitudes are ordered like the bits of them, and integers are compared several at a time.
float largest_of(std::span<const float> values) {
    std::int32_t largest = 0;
    for (const float value : values)
        largest = std::max(largest, std::bit_cast<std::int32_t>(std::abs(value)));
    return std::bit_cast<float>(largest);
}

}  // namespace

template <typename T, std::size_t N>
void Storage<T, N>::reset(std::size_t size, std::size_t nr_deltas) {
    clusters_.resize(size + 1);
    clusters_[size] = Cluster<T, N>::nobody();
    const std::size_t padded = size + sieve::padding;
    for (simd::Column<float>& column : mean_)
        column.assign(padded, sieve::nowhere);
    weight_.assign(padded, 1);
    inverse_.assign(padded, 1);
    for (std::size_t n = inverses_.size(); n <= nr_deltas + 1; ++n)
        inverses_.push_back(1 / static_cast<T>(n));
}

template <typename T, std::size_t N>
float Storage<T, N>::largest_mean(std::size_t size) const {
    float largest = 0;
    for (const simd::Column<float>& column : mean_)
        largest = std::max(largest, simd::widest<largest_of>(std::span(column).first(size)));
    return largest;
}

template class Storage<double, 1>;
template class Storage<double, 2>;

}  // namespace vela::gvm::fast
