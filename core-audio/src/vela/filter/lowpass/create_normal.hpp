#pragma once

#include <vela/filter/lowpass/Normal_itf.hpp>
#include <vela/filter/lowpass/Type.hpp>

namespace vela::filter::lowpass {

/// A fresh lowpass that cuts off at `freq` Hz.
///
/// `None` needs neither frequency nor rate.  Null if there is no design for them, or no such type.
/// Made for double.
template <typename T>
[[nodiscard]] typename Normal_itf<T>::Ptr create_normal(Type type, unsigned freq,
                                                        unsigned sample_rate);

}  // namespace vela::filter::lowpass
