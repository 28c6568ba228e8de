#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

/// A quick look in single precision at which clusters can matter, so that few costs are computed
/// exactly.
///
/// The cost of a merge is w * g^2, with g the distance of the two means and w = n m / (n + m) for
/// counts n and m.  The sieve estimates it from shadows of the means; what is left when everything
/// is dropped whose estimate lies too far above the lowest one holds the winner of the exact
/// search, all that tie with it, and everything whose exact cost comes out as 0.
///
/// Bound.  Let D be the largest magnitude of a coordinate, N the number of deltas, A the axes,
/// u = 2^-53.  All squares and quotients in an exact cost are at most M = N A D^2 (Cauchy-Schwarz);
/// it takes less than 20 roundings, counting those inside the two remembered cluster costs, whose
/// sums of squares drop out to the last bit.  So it is off by at most E = 32 u M = N A D^2 2^-48.
/// A shadow of a mean, one of a delta and their difference are off by D 2^-24, D 2^-24 and
/// 2 D 2^-24, so that the estimated distance is off by less than e, e^2 = A D^2 2^-44.  From
/// |x + y|^2 <= (1 + 1/32) |x|^2 + 33 |y|^2 follows, in both directions, for w <= W:
///
///     estimate <= 1.033 cost + 34 W e^2        cost <= 1.033 estimate + 34 W e^2
///
/// (with room for the roundings of squares, weights and products, and for 1 in 1024 that
/// reciprocals and block numbers take).  A cluster whose exact cost is not above that of the
/// one with the lowest estimate, or is 0, thus has an estimate of at most 1.07 lowest + W (72 e^2 +
/// 3 E); `slack` is the bracket.  Sums must be exact: the bound holds while N D < 2^53, beyond that
/// everything matters.
namespace vela::gvm::fast::sieve {

/// Shadows of the clusters.  Each array is read up to `padding` entries beyond the last cluster.
template <std::size_t N>
struct Columns {
    const float* mean[N];  ///< `nowhere` where no cluster is
    const float* weight;   ///< n / (n + 1): of a merge with a single delta
    const float* inverse;  ///< 1 / n
};

/// A coordinate farther away than any delta, the square of which is finite.
inline constexpr float nowhere = 0x1p60f;

/// A cluster as the sieve sees it.
template <std::size_t N>
struct Shadow {
    float mean[N];
    float inverse;
    std::uint32_t position;
};

/// The merges that clusters remember; arrays as above.
struct Remembered {
    const float* cost;
    const std::uint32_t* partner;
};

inline constexpr std::size_t padding = 16;

/// With more, only an infinite slack will do, with which every cluster matters.
inline constexpr std::size_t max_clusters = std::size_t{1} << 14;

/// Deltas that are looked at together: one pass over the clusters serves them all, and their lows
/// fill the registers of AVX2.
inline constexpr std::size_t batch = 4;

inline constexpr std::uint32_t several = std::numeric_limits<std::uint32_t>::max();

/// What the sieve leaves.
struct Found {
    std::uint32_t position;  ///< the only cluster that matters, or `several`
    float limit;             ///< clusters with a higher estimate do not matter
};

/// A batch of deltas, and what the sieve leaves for each.
template <std::size_t N>
struct Batch {
    float delta[N][batch];
    std::uint32_t position[batch];  ///< as in `Found`
    float limit[batch];
};

/// By how much an estimate may exceed the lowest, beside the slack.
inline constexpr float tolerance = 1.07f;

/// The bracket above; infinite where the bound does not hold.
[[nodiscard]] float slack(std::size_t nr_deltas, std::size_t axes, double largest);

/// The functions for one instruction set.  Lists of positions are ascending; room for as many as
/// there are clusters, and `padding` more, is the caller's.
template <std::size_t N>
struct Functions {
    /// For each delta, which of the clusters [0, size) it can be added to at least cost.
    void (*nearest)(Batch<N>& deltas, const Columns<N>& columns, std::size_t size, float slack);

    /// Lists all those, for one delta.  Returns how many.
    std::size_t (*all_nearest)(std::uint32_t* out, const Columns<N>& columns, std::size_t size,
                               const float (&delta)[N], float slack);

    /// With which of the clusters [0, at) the one at `at` can be merged at least cost.
    Found (*partner)(const Columns<N>& columns, std::size_t at, float slack);

    /// Lists all those, given the limit that `partner` found.
    std::size_t (*all_partners)(std::uint32_t* out, const Columns<N>& columns, std::size_t at,
                                float limit);

    /// Lists all positions of [first, last) whose cluster remembers a merge with neither `a` nor
    /// `b`, but can be merged with one of them at less.
    std::size_t (*cheaper)(std::uint32_t* out, const Columns<N>& columns,
                           const Remembered& remembered, std::size_t first, std::size_t last,
                           const Shadow<N>& a, const Shadow<N>& b, float slack);

    /// Lists where in [0, size) the lowest value stands.  What follows is infinite.
    std::size_t (*lowest)(std::uint32_t* out, const float* values, std::size_t size);
};

/// The best that this machine can do.
template <std::size_t N>
[[nodiscard]] const Functions<N>& functions();

}  // namespace vela::gvm::fast::sieve
