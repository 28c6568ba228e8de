#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace vela::fir {

/// A finite impulse response: each output is the sum of the latest inputs, weighed by the taps.
///
/// Every input is written twice, one filter length apart, so that the latest ones always stand in
/// one piece, newest first, and the sum needs no test for a wrap:
///
///     history   x3 x2 x1 x0 | x3 x2 x1 x0        the cursor walks down through the left half
///
/// One object filters one channel and keeps its history from block to block.  No allocation after
/// construction.
template <typename T>
class Filter {
public:
    /// REQUIRES: at least one tap.
    explicit Filter(std::vector<T> coefs)
        : nr_taps_(coefs.size()), coefs_(std::move(coefs)), history_(2 * nr_taps_) {}

    /// One sample in, one out.  The sum runs from the newest input to the oldest.
    T operator()(T x) {
        if (cursor_ == 0) cursor_ = nr_taps_;
        --cursor_;
        history_[cursor_] = x;
        history_[cursor_ + nr_taps_] = x;

        const T* const newest = history_.data() + cursor_;
        T sum{};
        for (std::size_t i = 0; i < nr_taps_; ++i)
            sum += coefs_[i] * newest[i];
        return sum;
    }

    [[nodiscard]] std::size_t nr_taps() const { return nr_taps_; }

private:
    std::size_t nr_taps_;
    std::vector<T> coefs_;
    std::vector<T> history_;
    std::size_t cursor_ = 0;
};

}  // namespace vela::fir
