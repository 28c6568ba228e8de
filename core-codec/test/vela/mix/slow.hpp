#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <vector>

/// The mix written down sample by sample from its definition, in 64 bits and without a thought
/// for speed; what the loops of `vela::mix` are held against.
namespace vela::mix::slow {

using Vector = std::vector<int>;
using Channels = std::vector<Vector>;  ///< Two or three, of one length.

/// The rounding of anchors: to even toward zero for two channels, to the nearest multiple of 4,
/// ties toward zero, for three.
inline std::int64_t rounded(std::size_t nr_channels, int x) {
    const double magnitude = std::abs(static_cast<double>(x));
    const double kept =
        nr_channels == 2 ? 2 * std::floor(magnitude / 2) : 4 * std::ceil(magnitude / 4 - 0.5);
    return static_cast<std::int64_t>(x < 0 ? -kept : kept);
}

inline bool is_anchor(const Channels& x, std::size_t c, std::size_t t) {
    return t % x.size() == c;
}

/// What channel c is predicted to be at t; nothing where it is an anchor or raw.
inline std::optional<std::int64_t> prediction(const Channels& x, std::size_t c, std::size_t t) {
    const std::size_t nr = x.size();
    const std::size_t size = x[c].size();
    if (t < c || is_anchor(x, c, t)) return std::nullopt;
    const std::size_t before = t - (t + nr - c) % nr;
    const std::size_t after = before + nr;
    const std::int64_t a = rounded(nr, x[c][before]);
    if (after < size) {
        const std::int64_t b = rounded(nr, x[c][after]);
        if (nr == 2) return (a + b) / 2;
        return t == before + 1 ? a + (b - a) / 4 : b - (b - a) / 4;
    }
    if (nr == 3 && before + 2 < size) {
        const std::int64_t third = (x[c][before + 2] - a) / 3;
        return t == before + 1 ? a + third : a + 3 * third;
    }
    return std::nullopt;
}

/// Which of the values of a residual or a center at t belongs to channel c.
inline std::size_t slot(const Channels& x, std::size_t c, std::size_t t) {
    std::size_t k = 0;
    for (std::size_t other = 0; other < c; ++other)
        if (!is_anchor(x, other, t)) ++k;
    return k;
}

inline Vector deltas(const Channels& x) {
    const std::size_t dims = x.size() - 1;
    Vector d(x[0].size() * dims, 0);
    for (std::size_t c = 0; c < x.size(); ++c)
        for (std::size_t t = 0; t < x[c].size(); ++t)
            if (const auto p = prediction(x, c, t))
                d[t * dims + slot(x, c, t)] = static_cast<int>(x[c][t] - *p);
    return d;
}

/// `c_of[t * dims + k]` is the center of t.
inline Vector mix(const Channels& x, const Vector& c_of) {
    const std::size_t dims = x.size() - 1;
    Vector out;
    for (std::size_t t = 0; t < x[0].size(); ++t) {
        std::int64_t sum = 0;
        for (std::size_t c = 0; c < x.size(); ++c) {
            if (const auto p = prediction(x, c, t))
                sum += *p + c_of[t * dims + slot(x, c, t)];
            else
                sum += is_anchor(x, c, t) ? rounded(x.size(), x[c][t]) : x[c][t];
        }
        out.push_back(static_cast<int>(sum));
    }
    return out;
}

/// `nr_channels` channels of random samples, `bits` wide.
inline Channels random_channels(std::mt19937& engine, std::size_t nr_channels, std::size_t size,
                                unsigned bits) {
    const int low = std::numeric_limits<int>::min() >> (32 - bits);
    std::uniform_int_distribution<int> sample(low, -(low + 1));
    Channels channels(nr_channels, Vector(size));
    for (Vector& channel : channels)
        for (int& x : channel)
            x = sample(engine);
    return channels;
}

}  // namespace vela::mix::slow
