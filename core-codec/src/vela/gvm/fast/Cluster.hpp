#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vela::gvm::fast {

/// What must be known of a set of deltas to tell its cost, and that of its union with another.
///
/// With n deltas of sum s and sum of squares q, the squared distances from the mean add up to
/// q - |s|^2 / n: no delta has to be visited twice.  The results are behaviour to the last bit, so
/// the order of the operations is part of the contract.
///
/// Ranges:  deltas are 32-bit integers; sums are exact up to 2^53.
template <typename T, std::size_t N>
struct Cluster {
    using Vector = std::array<T, N>;

    Vector sum{};
    T sum_sq = 0;  ///< of all coordinates together
    std::int32_t count = 0;
    T cost = 0;  ///< squared distances from the mean

    /// The cluster that holds `delta` alone.
    [[nodiscard]] static Cluster alone(const Vector& delta) {
        return {delta, squared_length(delta), 1, 0};
    }

    /// A cluster that it costs an infinite amount to merge with.
    [[nodiscard]] static Cluster nobody() { return {{}, std::numeric_limits<T>::infinity(), 0, 0}; }

    void insert(const Vector& delta) { merge(alone(delta)); }
    void merge(const Cluster& other) { merge(other, united_share(other)); }

    /// With the `united_share` known.
    void merge(const Cluster& other, T share) {
        for (std::size_t i = 0; i < N; ++i)
            sum[i] += other.sum[i];
        sum_sq += other.sum_sq;
        count += other.count;
        cost = sum_sq - share;
    }

    /// By how much the cost of the union exceeds that of the two parts.
    ///
    /// The two ways round differ in the last bits.  The cost of adding a delta to a cluster is
    /// that cluster's `merge_delta` with the delta `alone`.  Rounding can make the result negative.
    void merge_delta(T& result, const Cluster& other) const {
        result = merge_delta(other, united_share(other));
    }
    [[nodiscard]] T merge_delta(const Cluster& other, T share) const {
        return sum_sq - share + other.sum_sq - cost - other.cost;
    }

    /// |s|^2 / n of the union: what both of the above need, and the one division in them.
    [[nodiscard]] T united_share(const Cluster& other) const {
        Vector united;
        for (std::size_t i = 0; i < N; ++i)
            united[i] = sum[i] + other.sum[i];
        return squared_length(united) / static_cast<T>(count + other.count);
    }

    [[nodiscard]] static T squared_length(const Vector& vector) {
        T length = vector[0] * vector[0];
        for (std::size_t i = 1; i < N; ++i)
            length += vector[i] * vector[i];
        return length;
    }
};

}  // namespace vela::gvm::fast
