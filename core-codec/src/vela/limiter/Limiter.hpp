#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frame.hpp>
#include <vela/limiter/LinearScaler.hpp>
#include <vela/limiter/ReturnCode.hpp>
#include <vela/numeric/wrap.hpp>
#include <vela/simd/widest.hpp>

namespace vela::limiter {

/// Finds the smallest gain by which the sum of two or three channels must be divided to stay at
/// or below a threshold.
///
/// It changes no samples; the caller divides.  `Scaler` says which gains there are.  Samples are
/// integers at their native width, and their sums wrap at 32 bits.
template <typename T, typename Scaler>
class Limiter {
public:
    using Frame = api::Frame<T, api::ChannelVariant>;

    unsigned bit_depth = 0;       ///< Width of the samples.
    std::uint64_t threshold = 0;  ///< Magnitude above which to scale.
    unsigned char scaler_ix = 0;  ///< Result: index of the gain; changes with `scaled` alone.
    float scaler = 1.0f;          ///< Result: the gain, linear.

    Limiter(unsigned depth, std::uint64_t above) : bit_depth(depth), threshold(above) {}

    /// Looks for the largest magnitude of the sum of corresponding samples.  `scaler_ix` and
    /// `scaler` hold the gain if the answer is `scaled`, and are as before with any other.
    [[nodiscard]] ReturnCode analyse(const Frame& a, const Frame& b) { return analyse_(a, b); }
    [[nodiscard]] ReturnCode analyse(const Frame& a, const Frame& b, const Frame& c) {
        return analyse_(a, b, c);
    }

private:
    template <typename... Others>
    ReturnCode analyse_(const Frame& first, const Others&... others) {
        T max = 0;
        const ReturnCode code = compute_max_(max, first, others...);
        if (code != ReturnCode::nothing) return code;
        if (static_cast<std::uint64_t>(max) <= threshold) return ReturnCode::nothing;
        const double ratio = static_cast<double>(max) / static_cast<double>(threshold);
        return Scaler::find(scaler_ix, scaler, ratio) ? ReturnCode::scaled
                                                      : ReturnCode::out_of_range;
    }

    /// Largest magnitude of the sum, 0 for empty frames; `lengths_differ` or `nothing`.
    template <typename... Others>
    static ReturnCode compute_max_(T& max, const Frame& first, const Others&... others) {
        if (((others.size() != first.size()) || ...)) return ReturnCode::lengths_differ;
        max = simd::widest<largest_<decltype(others.samples())...>>(first.samples(),
                                                                    others.samples()...);
        return ReturnCode::nothing;
    }

    /// Starts from 0, so that a sum without a magnitude (the smallest integer) never counts.
    template <typename... Others>
    static T largest_(std::span<const T> first, Others... others) {
        T max = 0;
        for (std::size_t t = 0; t < first.size(); ++t) {
            T sum = first[t];
            ((sum = numeric::wrap_add(sum, others[t])), ...);
            max = std::max(max, numeric::wrap_abs(sum));
        }
        return max;
    }
};

}  // namespace vela::limiter
