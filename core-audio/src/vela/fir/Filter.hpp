#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace vela::fir {

/// A finite impulse response: each output is the sum of the latest inputs, weighed by the taps.
///
/// Each sum runs from 0 and from the newest input to the oldest, so that its bits are fixed.  Taken
/// alone it is a chain of additions that wait for each other; so a few taps at a time are added to
/// all sums of a block, in a loop that compilers vectorise.
///
/// One object filters one channel and keeps its latest inputs from block to block.  No allocation
/// after the first block, unless a longer one comes.
template <typename T>
class Filter {
public:
    /// REQUIRES: at least one tap.
    explicit Filter(std::vector<T> coefs) : coefs_(std::move(coefs)), inputs_(coefs_.size() - 1) {}

    /// Replaces each sample by the answer to it.
    void operator()(std::span<T> samples) {
        inputs_.insert(inputs_.end(), samples.begin(), samples.end());
        std::ranges::fill(samples, T{});
        const T* newest = inputs_.data() + nr_taps() - 1;  // for the first sum
        const std::span<const T> coefs(coefs_);
        std::size_t i = 0;
        for (; i + at_once <= nr_taps(); i += at_once)
            add_(samples, newest - i, coefs.subspan(i).template first<at_once>());
        for (; i < nr_taps(); ++i)
            add_(samples, newest - i, coefs.subspan(i).template first<1>());
        inputs_.erase(inputs_.begin(), inputs_.begin() + std::ssize(samples));
    }

    /// One sample in, one out.
    T operator()(T x) {
        (*this)(std::span(&x, 1));
        return x;
    }

    [[nodiscard]] std::size_t nr_taps() const { return coefs_.size(); }

private:
    static constexpr std::size_t at_once = 4;

    /// Adds some taps to all sums; `newest` is the input that the first of them weighs in the first
    /// sum.
    template <std::size_t N>
    static void add_(std::span<T> sums, const T* newest, std::span<const T, N> some_coefs) {
        std::array<T, N> coefs;
        std::ranges::copy(some_coefs, coefs.begin());
        for (std::ptrdiff_t t = 0; t < std::ssize(sums); ++t)
            for (std::ptrdiff_t i = 0; i < std::ssize(coefs); ++i)
                sums[t] += coefs[i] * newest[t - i];
    }

    std::vector<T> coefs_;
    /// Between blocks one less than there are taps, the oldest first.
    std::vector<T> inputs_;
};

}  // namespace vela::fir
