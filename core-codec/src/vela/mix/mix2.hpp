#pragma once

#include <cstddef>
#include <vela/mix/rounding.hpp>
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

/// REQUIRES anchors at t - 1 and t + 1.  Their sum is even, wrapped or not: a shift divides it
/// without a remainder.
[[nodiscard]] inline int prediction(const int* x, std::size_t t) {
    return numeric::wrap_add(even(x[t - 1]), even(x[t + 1])) >> 1;
}

}  // namespace vela::mix::mix2
