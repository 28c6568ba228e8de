#pragma once

#include <vela/filter/lowpass/Normal_itf.hpp>

namespace vela::filter::lowpass::none {

/// Lets everything through.
template <typename T>
class Normal : public Normal_itf<T> {
public:
    [[nodiscard]] unsigned delay() const override { return 0; }
    using Normal_itf<T>::operator();
    T operator()(T x) override { return x; }
};

}  // namespace vela::filter::lowpass::none
