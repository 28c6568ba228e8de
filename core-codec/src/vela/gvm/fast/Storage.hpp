#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>
#include <vela/gvm/fast/Cluster.hpp>
#include <vela/gvm/fast/costs.hpp>
#include <vela/gvm/fast/sieve.hpp>

namespace vela::gvm::fast {

/// Place of a cluster in the storage; it stays while sizes and output indices change.
using Position = std::uint32_t;

/// Stands where a cluster has no partner to merge with.
inline constexpr Position no_partner = std::numeric_limits<Position>::max();

/// All clusters of a clustering as a structure of arrays, one entry per position in each.
///
/// Beside the exact numbers stand their shadows in single precision, which the sieve runs over from
/// end to end for every delta; positions without a cluster are infinitely far away there.
template <typename T, std::size_t N>
class Storage {
public:
    /// Forgets all clusters; `size` positions.
    void reset(std::size_t size);

    [[nodiscard]] Cluster<T, N> load(Position at) const {
        Cluster<T, N> cluster{{}, sum_sq_[at], static_cast<std::int32_t>(count_[at]), cost_[at]};
        for (std::size_t i = 0; i < N; ++i)
            cluster.sum[i] = sum_[i][at];
        return cluster;
    }

    /// `cluster` must not be empty.
    void store(Position at, const Cluster<T, N>& cluster) {
        const T count = cluster.count;
        for (std::size_t i = 0; i < N; ++i) {
            sum_[i][at] = cluster.sum[i];
            mean_[i][at] = static_cast<float>(cluster.sum[i] / count);
        }
        sum_sq_[at] = cluster.sum_sq;
        count_[at] = count;
        cost_[at] = cluster.cost;
        const auto n = static_cast<float>(cluster.count);
        weight_[at] = n / (n + 1);
        inverse_[at] = 1 / n;
    }

    /// Leaves the position without a cluster.
    void erase(Position at) {
        for (std::size_t i = 0; i < N; ++i)
            mean_[i][at] = std::numeric_limits<float>::infinity();
    }

    [[nodiscard]] T sum(std::size_t axis, Position at) const { return sum_[axis][at]; }
    [[nodiscard]] T cost(Position at) const { return cost_[at]; }
    [[nodiscard]] std::int32_t count(Position at) const {
        return static_cast<std::int32_t>(count_[at]);
    }

    [[nodiscard]] costs::Columns<N> columns() const;
    [[nodiscard]] sieve::Columns<N> shadows() const;

private:
    // All longer than the size, since they are read in whole registers.
    std::array<std::vector<T>, N> sum_;
    std::vector<T> sum_sq_;
    std::vector<T> count_;  // whole numbers, as reals because the costs divide by them
    std::vector<T> cost_;
    std::array<std::vector<float>, N> mean_;
    std::vector<float> weight_;   // n / (n + 1)
    std::vector<float> inverse_;  // 1 / n
};

}  // namespace vela::gvm::fast
