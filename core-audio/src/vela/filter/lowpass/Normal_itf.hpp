#pragma once

#include <memory>
#include <span>

namespace vela::filter::lowpass {

/// The lowpass of one channel, with its state: one sample in, one out.
///
/// It keeps its history for a whole run; one thread uses it.
template <typename T>
class Normal_itf {
public:
    using Ptr = std::shared_ptr<Normal_itf>;

    virtual ~Normal_itf() = default;

    /// Samples by which the output lags behind the input.
    [[nodiscard]] virtual unsigned delay() const = 0;
    /// Replaces each sample by the answer to it; a block at once is faster by far.
    virtual void operator()(std::span<T> samples) = 0;
    T operator()(T x) {
        (*this)(std::span(&x, 1));
        return x;
    }
};

}  // namespace vela::filter::lowpass
