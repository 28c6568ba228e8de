#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>
#include <vela/gvm/fast/Cluster.hpp>
#include <vela/gvm/fast/costs.hpp>

namespace vela::gvm::fast {

/// Place of a cluster in the storage; it stays while sizes and output indices change.
using Position = std::uint32_t;

/// Stands where a cluster has no partner to merge with.
inline constexpr Position no_partner = std::numeric_limits<Position>::max();

/// All clusters of a clustering as a structure of arrays, one entry per position in each.
///
/// The searches run over one or two of these arrays from end to end for every delta.
template <typename T, std::size_t N>
struct Storage {
    explicit Storage(std::size_t size)
        : sum_sq(size + costs::padding),
          count(size + costs::padding),
          cost(size + costs::padding),
          best_merge(size, no_partner),
          best_delta(size),
          dirty(size) {
        sum.fill(std::vector<T>(size + costs::padding));
    }

    [[nodiscard]] Cluster<T, N> load(Position at) const {
        Cluster<T, N> cluster{{}, sum_sq[at], static_cast<std::int32_t>(count[at]), cost[at]};
        for (std::size_t i = 0; i < N; ++i)
            cluster.sum[i] = sum[i][at];
        return cluster;
    }

    /// The remembered merge and the mark stay as they are.
    void store(Position at, const Cluster<T, N>& cluster) {
        for (std::size_t i = 0; i < N; ++i)
            sum[i][at] = cluster.sum[i];
        sum_sq[at] = cluster.sum_sq;
        count[at] = cluster.count;
        cost[at] = cluster.cost;
    }

    [[nodiscard]] costs::Columns<N> columns() const {
        costs::Columns<N> columns{{}, sum_sq.data(), count.data(), cost.data()};
        for (std::size_t i = 0; i < N; ++i)
            columns.sum[i] = sum[i].data();
        return columns;
    }

    /// Takes the remembered merge and the mark along.
    void copy(Position from, Position to) {
        store(to, load(from));
        best_merge[to] = best_merge[from];
        best_delta[to] = best_delta[from];
        dirty[to] = dirty[from];
    }

    // Longer than the rest, since they are read in whole registers.
    std::array<std::vector<T>, N> sum;
    std::vector<T> sum_sq;
    std::vector<T> count;  ///< whole numbers, as reals because the costs divide by them
    std::vector<T> cost;
    std::vector<Position> best_merge;  ///< remembered partner, always at a lower position
    std::vector<T> best_delta;         ///< remembered cost of that merge
    std::vector<std::uint8_t> dirty;   ///< changed since the remembered merges were valid
};

}  // namespace vela::gvm::fast
