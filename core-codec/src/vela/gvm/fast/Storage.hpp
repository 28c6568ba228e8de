#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>
#include <vela/gvm/fast/Cluster.hpp>
#include <vela/gvm/fast/sieve.hpp>
#include <vela/simd/Column.hpp>

namespace vela::gvm::fast {

/// Place of a cluster in the storage; it stays while sizes and output indices change.
using Position = std::uint32_t;

/// Stands where a cluster has no partner to merge with.
inline constexpr Position no_partner = std::numeric_limits<Position>::max();

/// All clusters of a clustering by position, each with its shadow for the sieve.
template <typename T, std::size_t N>
class Storage {
public:
    /// Forgets all clusters; `size` positions for clusters of at most `nr_deltas`.  The position
    /// behind them holds `nobody` until the next reset.
    void reset(std::size_t size, std::size_t nr_deltas);

    [[nodiscard]] const Cluster<T, N>& operator[](Position at) const { return clusters_[at]; }

    /// `cluster` must not be empty.
    void store(Position at, const Cluster<T, N>& cluster) {
        clusters_[at] = cluster;
        cast_shadow_(at);
    }

    /// `share` is the `united_share`.
    void merge(Position at, const Cluster<T, N>& other, T share) {
        clusters_[at].merge(other, share);
        cast_shadow_(at);
    }

    /// Leaves the position without a cluster.
    void erase(Position at) {
        for (std::size_t i = 0; i < N; ++i)
            mean_[i][at] = sieve::nowhere;
    }

    /// The largest magnitude among the means of positions [0, size), off by less than 1 in 2^22.
    [[nodiscard]] float largest_mean(std::size_t size) const;

    [[nodiscard]] sieve::Columns<N> shadows() const {
        sieve::Columns<N> columns{{}, weight_.data(), inverse_.data()};
        for (std::size_t i = 0; i < N; ++i)
            columns.mean[i] = mean_[i].data();
        return columns;
    }

private:
    void cast_shadow_(Position at) {
        const Cluster<T, N>& cluster = clusters_[at];
        // The sieve's bound has room for the rounding of reciprocals.
        const auto n = static_cast<std::size_t>(cluster.count);
        const T inverse = inverses_[n];
        for (std::size_t i = 0; i < N; ++i)
            mean_[i][at] = static_cast<float>(cluster.sum[i] * inverse);
        weight_[at] = static_cast<float>(1 - inverses_[n + 1]);
        inverse_[at] = static_cast<float>(inverse);
    }

    std::vector<Cluster<T, N>> clusters_;

    // Longer than the size, since they are read in whole registers.
    std::array<simd::Column<float>, N> mean_;
    simd::Column<float> weight_;   // n / (n + 1)
    simd::Column<float> inverse_;  // 1 / n

    std::vector<T> inverses_;  // of whole numbers: four divisions a delta less
};

}  // namespace vela::gvm::fast
