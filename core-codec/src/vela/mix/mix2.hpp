#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vela/mix/rounding.hpp>
#include <vela/mix/types.hpp>
#include <vela/numeric/wrap.hpp>

/// One channel's part in a mix of two.
///
/// Channel `I` is anchored at t = I, I + 2, I + 4, ...: there it goes into the mix rounded to
/// even.  Between two anchors stands their mean, its prediction.  Before the first anchor and
/// after the last one there is nothing to predict from, and the sample goes in as it is.
///
///     t      0      1      2      3      4         (N = 5)
///     I = 0  anchor mean   anchor mean   anchor
///     I = 1  raw    anchor mean   anchor raw
namespace vela::mix::mix2 {

/// Visits the samples of channel `I` in time order: `anchored(t, rounded)`,
/// `predicted(t, prediction)`, `raw(t)`; each t from 0 to N - 1 exactly once.  REQUIRES N > I.
template <std::size_t I, typename Anchored, typename Predicted, typename Raw>
void walk(Samples x, Anchored anchored, Predicted predicted, Raw raw) {
    const std::size_t size = x.size();
    for (std::size_t t = 0; t < I; ++t)
        raw(t);
    std::size_t t = I;
    int last = even(x[t]);
    anchored(t, last);
    // The sum of two anchors is even, wrapped or not: a shift divides it without a remainder, and
    // a frame of 1024 mixes in 0.65 us instead of 0.8.
    for (; t + 2 < size; t += 2) {
        const int next = even(x[t + 2]);
        predicted(t + 1, numeric::wrap_add(last, next) >> 1);
        anchored(t + 2, next);
        last = next;
    }
    if (t + 1 < size) raw(t + 1);
}

/// The sample less its prediction; REQUIRES anchors at t - 1 and t + 1.
[[nodiscard]] inline int residual(const int* x, std::size_t t) {
    return numeric::wrap_sub(x[t], numeric::wrap_add(even(x[t - 1]), even(x[t + 1])) >> 1);
}

/// Adds what channel `I` contributes to the mix; channel 0 comes first and overwrites `out`.
template <std::size_t I>
void mix(std::span<int> out, std::span<const std::uint64_t> ixs, const Centers1& centers,
         Samples x) {
    const auto add = [&](std::size_t t, int value) {
        out[t] = I == 0 ? value : numeric::wrap_add(out[t], value);
    };
    walk<I>(
        x, add,
        [&](std::size_t t, int prediction) {
            add(t, numeric::wrap_add(prediction, centers[ixs[t]][0]));
        },
        [&](std::size_t t) { add(t, x[t]); });
}

}  // namespace vela::mix::mix2
