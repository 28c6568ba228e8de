#include <vela/mix/mix.hpp>
#include <vela/mix/mix2.hpp>
#include <vela/mix/mix3.hpp>
#include <vela/mix/rounding.hpp>
#include <vela/numeric/wrap.hpp>
#include <vela/simd/widest.hpp>

namespace vela::mix {

using numeric::wrap_add;
using numeric::wrap_mul;
using numeric::wrap_sub;

namespace {

// Both channels in one loop, so that compilers make several samples at a time.
void mix_without_centers(std::span<int> out, Samples x, Samples y) {
    const std::size_t size = x.size();
    const auto odd = [&](std::size_t t) {
        return wrap_add(mix2::prediction(x.data(), t), even(y[t]));
    };
    out[0] = wrap_add(even(x[0]), y[0]);
    std::size_t t = 1;
    for (; t + 2 < size; t += 2) {
        out[t] = odd(t);
        out[t + 1] = wrap_add(even(x[t + 1]), mix2::prediction(y.data(), t + 1));
    }
    if (t + 1 < size) {
        out[t] = odd(t);
        out[t + 1] = wrap_add(even(x[t + 1]), y[t + 1]);
    } else {
        out[t] = wrap_add(x[t], even(y[t]));
    }
}

}  // namespace

bool mix(std::span<int> seeds, std::span<int> out, std::span<const std::uint64_t> ixs,
         const Centers1& centers, Samples x, Samples y) {
    const std::size_t size = x.size();
    if (size < 4 || y.size() != size || out.size() != size || ixs.size() != size) return false;
    if (seeds.size() != 2) return false;
    simd::widest<mix_without_centers>(out, x, y);
    for (std::size_t t = 1; t + 1 < size; ++t)
        out[t] = wrap_add(out[t], centers[ixs[t]][0]);

    seeds[0] = wrap_sub(y[0], centers[ixs[0]][0]);
    // What is left is the prediction of x at 1.
    seeds[1] = wrap_sub(wrap_sub(out[1], centers[ixs[1]][0]), even(y[1]));
    return true;
}

bool mix(std::span<int> seeds, std::span<int> out, std::span<const std::uint64_t> ixs,
         const Centers2& centers, Samples x0, Samples x1, Samples x2) {
    const std::size_t size = x0.size();
    if (size < 6 || x1.size() != size || x2.size() != size) return false;
    if (out.size() != size || ixs.size() != size || seeds.size() != 5) return false;
    mix3::mix<0>(out, ixs, centers, x0);
    mix3::mix<1>(out, ixs, centers, x1);
    mix3::mix<2>(out, ixs, centers, x2);

    const auto& [c00, c01] = centers[ixs[0]];
    const auto& [c10, c11] = centers[ixs[1]];
    const auto& [c20, c21] = centers[ixs[2]];
    seeds[0] = wrap_sub(x1[0], c00);
    seeds[1] = wrap_sub(x2[0], c01);
    // What is left is the prediction of x0 at 1.
    seeds[2] = wrap_sub(wrap_sub(wrap_sub(out[1], c10), x2[1]), quad(x1[1]));
    seeds[3] = wrap_sub(x2[1], c11);
    // Three times seeds[2] less two anchors is the prediction of x0 at 2; left is that of x1.
    const int predicted0 = wrap_sub(wrap_mul(3, seeds[2]), wrap_mul(2, quad(x0[0])));
    const int predictions = wrap_sub(wrap_sub(wrap_sub(out[2], c20), c21), quad(x2[2]));
    seeds[4] = wrap_sub(predictions, predicted0);
    return true;
}

}  // namespace vela::mix
