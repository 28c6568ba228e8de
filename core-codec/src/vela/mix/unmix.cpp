#include <algorithm>
#include <vela/mix/mix3/Train.hpp>
#include <vela/mix/unmix.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::mix {

using numeric::wrap_add;
using numeric::wrap_mul;
using numeric::wrap_sub;

namespace {

/// Everything that can be known before t = 3, and what follows from it: channel 0 up to its
/// anchor at 3, channel 1 up to its anchor at 4.
void start(std::span<int> y0, std::span<int> y1, std::span<int> y2, std::span<const int> seeds,
           std::span<const int> m, std::span<const std::uint64_t> ixs, const Centers2& centers) {
    const auto& [c00, c01] = centers[ixs[0]];
    const auto& [c10, c11] = centers[ixs[1]];
    const auto& [c20, c21] = centers[ixs[2]];
    y1[0] = wrap_add(c00, seeds[0]);
    y2[0] = wrap_add(c01, seeds[1]);
    y0[0] = wrap_sub(wrap_sub(m[0], y1[0]), y2[0]);

    const int step0 = wrap_sub(seeds[2], y0[0]);
    y0[1] = wrap_add(seeds[2], c10);
    y0[2] = wrap_add(wrap_add(seeds[2], wrap_mul(2, step0)), c20);
    y0[3] = wrap_add(seeds[2], wrap_mul(3, step0));
    y2[1] = wrap_add(c11, seeds[3]);
    y1[1] = wrap_sub(wrap_sub(m[1], y2[1]), y0[1]);

    const int step1 = wrap_sub(seeds[4], y1[1]);
    y1[2] = wrap_add(seeds[4], c21);
    y1[3] = wrap_add(seeds[4], wrap_mul(2, step1));
    y1[4] = wrap_add(seeds[4], wrap_mul(3, step1));
    y2[2] = wrap_sub(wrap_sub(m[2], y1[2]), y0[2]);
}

}  // namespace

bool unmix(std::span<int> y0, std::span<int> y1, std::span<const int> seeds, std::span<const int> m,
           std::span<const std::uint64_t> ixs, const Centers1& centers) {
    const std::size_t size = m.size();
    if (size < 3 || y0.size() != size || y1.size() != size || ixs.size() != size) return false;
    if (seeds.size() != 2) return false;
    y1[0] = wrap_add(seeds[0], centers[ixs[0]][0]);
    y0[0] = wrap_sub(m[0], y1[0]);
    y0[1] = wrap_add(seeds[1], centers[ixs[1]][0]);
    y1[1] = wrap_sub(m[1], y0[1]);

    // At even t y0 is anchored and the mix gives y1, at odd t the other way round.  What the mix
    // gives, less its center, is the mean of the anchors at t - 1 and t + 1.  Put with the sum of
    // two anchors that follow each other, a sample waits for one subtraction instead of four.
    int anchor = wrap_sub(wrap_mul(2, seeds[1]), y0[0]);
    int sum = wrap_add(y1[1], anchor);
    const auto put = [&](std::size_t t, int* anchored, int* other) {
        anchored[t] = anchor;
        other[t] = wrap_sub(m[t], anchor);
    };
    const auto step = [&](std::size_t t, int* anchored, int* other) {
        put(t, anchored, other);
        sum = wrap_sub(wrap_mul(2, wrap_sub(m[t], centers[ixs[t]][0])), sum);
        anchor = wrap_sub(sum, anchor);
    };
    std::size_t t = 2;
    for (; t + 2 < size; t += 2) {
        step(t, y0.data(), y1.data());
        step(t + 1, y1.data(), y0.data());
    }
    // The last sample has no center.
    if (t + 1 < size) {
        step(t, y0.data(), y1.data());
        put(t + 1, y1.data(), y0.data());
    } else {
        put(t, y0.data(), y1.data());
    }
    return true;
}

bool unmix(std::span<int> y0, std::span<int> y1, std::span<int> y2, std::span<const int> seeds,
           std::span<const int> m, std::span<const std::uint64_t> ixs, const Centers2& centers) {
    const std::size_t size = m.size();
    if (size < 5 || y0.size() != size || y1.size() != size || y2.size() != size) return false;
    if (ixs.size() != size || seeds.size() != 5) return false;
    start(y0, y1, y2, seeds, m, ixs, centers);

    mix3::Train<int*> train(&y0[2], &y1[2], &y2[2]);
    std::size_t t = 3;
    for (; t + 2 < size; ++t)
        train.proceed<3>(t, m[t], centers[ixs[t]]);
    train.proceed<2>(t, m[t], centers[ixs[t]]);
    ++t;
    train.proceed<1>(t, m[t], centers[ixs[t]]);
    return true;
}

}  // namespace vela::mix
