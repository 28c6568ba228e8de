#include <vela/mix/deltas.hpp>
#include <vela/mix/mix2.hpp>
#include <vela/mix/mix3.hpp>
#include <vela/numeric/wrap.hpp>
#include <vela/simd/widest.hpp>

namespace vela::mix {

namespace {

// Both channels in one loop, so that compilers make several at a time.
void fill(std::span<int> d, Samples x, Samples y) {
    const std::size_t size = x.size();
    const auto residual = [](Samples of, std::size_t t) {
        return numeric::wrap_sub(of[t], mix2::prediction(of.data(), t));
    };
    d[0] = 0;
    std::size_t t = 1;
    for (; t + 2 < size; t += 2) {
        d[t] = residual(x, t);
        d[t + 1] = residual(y, t + 1);
    }
    if (t + 1 < size) d[t] = residual(x, t);
    d[size - 1] = 0;
}

}  // namespace

bool deltas(std::span<int> d, Samples x, Samples y) {
    const std::size_t size = x.size();
    if (size < 4 || y.size() != size || d.size() != size) return false;
    simd::widest<fill>(d, x, y);
    return true;
}

bool deltas(std::span<int> d, Samples x0, Samples x1, Samples x2) {
    const std::size_t size = x0.size();
    if (size < 6 || x1.size() != size || x2.size() != size || d.size() != 2 * size) return false;
    mix3::deltas<0, 2, 4>(d, x0);
    mix3::deltas<1, 1, 5>(d, x1);
    mix3::deltas<2, 2, 4>(d, x2);
    // Samples before the first anchor of their channel.
    d[0] = d[1] = d[3] = 0;
    return true;
}

}  // namespace vela::mix
