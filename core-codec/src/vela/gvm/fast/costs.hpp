#pragma once

#include <cstddef>

/// Costs of one cluster with each of many, several at a time.
///
/// The searches of the learner spend their time here: 150 clusters are looked at for every delta.
/// Each lane does the operations of `Cluster::merge_delta` in the same order, division included, so
/// that the results are the same to the bit with every instruction set.
namespace vela::gvm::fast::costs {

/// Clusters as arrays; what is read of each is [0, size rounded up to `padding`).
template <std::size_t N>
struct Columns {
    const double* sum[N];
    const double* sum_sq;
    const double* count;
    const double* cost;
};

/// One cluster.
template <std::size_t N>
struct Fixed {
    double sum[N];
    double sum_sq;
    double count;
    double cost;
};

/// Arrays must be this much longer than what counts, at the most.
inline constexpr std::size_t padding = 8;

/// What `lowest` finds.
struct Lowest {
    double value;
    bool has_zero;  ///< rounding can bring `value` below an exact 0 elsewhere
};

/// The functions for one instruction set.
template <std::size_t N>
struct Functions {
    /// out[i] = merge_delta of cluster i with `fixed`, for i in [first, last).  Fewer than
    /// `padding` entries behind these are overwritten.
    void (*with_partner)(double* out, Columns<N> columns, std::size_t first, std::size_t last,
                         const Fixed<N>& fixed);
    /// out[i] = merge_delta of `fixed` with cluster i, likewise.
    void (*as_owner)(double* out, Columns<N> columns, std::size_t first, std::size_t last,
                     const Fixed<N>& fixed);
    /// Of [first, last), not empty.
    Lowest (*lowest)(const double* values, std::size_t first, std::size_t last);
};

/// The best that this machine can do.
template <std::size_t N>
[[nodiscard]] const Functions<N>& functions();

}  // namespace vela::gvm::fast::costs
