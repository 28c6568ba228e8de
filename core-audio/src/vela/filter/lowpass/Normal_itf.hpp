#pragma once

#include <memory>

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
};

}  // namespace vela::filter::lowpass
