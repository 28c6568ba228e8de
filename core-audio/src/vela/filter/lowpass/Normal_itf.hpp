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
    virtual T operator()(T x) = 0;
    /// Replaces each sample by the answer to it: the same, and faster where a block gains by it.
    virtual void operator()(std::span<T> samples) {
        for (T& x : samples)
            x = (*this)(x);
    }
};

}  // namespace vela::filter::lowpass
