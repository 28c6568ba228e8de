#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vela/mix/rounding.hpp>
#include <vela/mix/types.hpp>
#include <vela/numeric/wrap.hpp>

/// One channel's part in a mix of three.
///
/// Channel `I` is anchored at t = I, I + 3, I + 6, ...: there it goes into the mix rounded to a
/// multiple of 4.  The two samples between anchors A and B = A + 3 are predicted a quarter of the
/// way from the nearer anchor; a quarter and not a third, since it divides without a remainder.
/// After the last anchor a pair is predicted from its own second sample, by thirds, and a lone
/// sample goes in as it is, like those before the first anchor.
///
///     t      0      1      2      3      4      5      6         (N = 7)
///     I = 0  anchor k = 0  k = 0  anchor k = 0  k = 0  anchor
///     I = 1  raw    anchor k = 1  k = 0  anchor k = 1  k = 0
///     I = 2  raw    raw    anchor k = 1  k = 1  anchor raw
///
/// k says which of the two values at t belongs to the channel, in the residuals (`d[2t + k]`) and
/// in a center alike.
namespace vela::mix::mix3 {

/// k of channel `I` one sample after an anchor, and two samples after.
template <std::size_t I>
inline constexpr std::size_t slot_one_after = I == 0 ? 0 : 1;
template <std::size_t I>
inline constexpr std::size_t slot_two_after = I == 2 ? 1 : 0;

/// Visits the samples of channel `I` in time order: `anchored(t, rounded)`,
/// `one_after(t, prediction)`, `two_after(t, prediction)`, `raw(t)`; each t from 0 to N - 1
/// exactly once.  REQUIRES N > I.
template <std::size_t I, typename Anchored, typename OneAfter, typename TwoAfter, typename Raw>
void walk(Samples x, Anchored anchored, OneAfter one_after, TwoAfter two_after, Raw raw) {
    using numeric::wrap_add, numeric::wrap_mul, numeric::wrap_sub;
    const std::size_t size = x.size();
    for (std::size_t t = 0; t < I; ++t)
        raw(t);
    std::size_t t = I;
    int last = quad(x[t]);
    anchored(t, last);
    // The difference of two anchors is a multiple of 4, wrapped or not: the shift is exact.
    for (; t + 3 < size; t += 3) {
        const int next = quad(x[t + 3]);
        const int step = wrap_sub(next, last) >> 2;
        one_after(t + 1, wrap_add(last, step));
        two_after(t + 2, wrap_sub(next, step));
        anchored(t + 3, next);
        last = next;
    }
    if (t + 2 < size) {
        const int step = wrap_sub(x[t + 2], last) / 3;
        one_after(t + 1, wrap_add(last, step));
        two_after(t + 2, wrap_add(last, wrap_mul(3, step)));
    } else if (t + 1 < size) {
        raw(t + 1);
    }
}

/// Writes the residuals of channel `I`, sample less prediction, from `d[2(I + 1) + k]` on, where
/// `A` and `B` are by turns the steps from one to the next.  A raw sample after the last anchor
/// has residual 0; entries before the first anchor are left alone.
template <std::size_t I, std::size_t A, std::size_t B>
void deltas(std::span<int> d, Samples x) {
    static_assert(A == 2 + slot_two_after<I> - slot_one_after<I> && A + B == 6);
    std::size_t at = 2 * (I + 1) + slot_one_after<I>;
    const auto write = [&](std::size_t step) {
        return [&, step](std::size_t t, int prediction) {
            d[at] = numeric::wrap_sub(x[t], prediction);
            at += step;
        };
    };
    walk<I>(
        x, [](std::size_t, int) {}, write(A), write(B),
        [&](std::size_t t) {
            if (t > I) d[at] = 0;
        });
}

/// Adds what channel `I` contributes to the mix; channel 0 comes first and overwrites `out`.
template <std::size_t I>
void mix(std::span<int> out, std::span<const std::uint64_t> ixs, const Centers2& centers,
         Samples x) {
    const auto add = [&](std::size_t t, int value) {
        out[t] = I == 0 ? value : numeric::wrap_add(out[t], value);
    };
    const auto add_corrected = [&](std::size_t k) {
        return [&, k](std::size_t t, int prediction) {
            add(t, numeric::wrap_add(prediction, centers[ixs[t]][k]));
        };
    };
    walk<I>(x, add, add_corrected(slot_one_after<I>), add_corrected(slot_two_after<I>),
            [&](std::size_t t) { add(t, x[t]); });
}

}  // namespace vela::mix::mix3
