#pragma once

#include <vector>
#include <vela/filter/Cascade.hpp>
#include <vela/filter/lowpass/Normal_itf.hpp>
#include <vela/filter/lowpass/iir/Coef.hpp>
#include <vela/iir/BiQuad.hpp>

namespace vela::filter::lowpass::iir {

/// Three sections in a row; the phase bends near the cut-off.
template <typename T>
class Normal : public Normal_itf<T> {
public:
    explicit Normal(const std::vector<Coef>& coefs) {
        for (const Coef& c : coefs)
            filter_.add(c.gain, vela::iir::BiQuad<T>(c.b0, c.b1, c.b2, c.a1, c.a2));
    }

    /// What low frequencies lag by, a quarter to three quarters of a sample, rounded up.
    [[nodiscard]] unsigned delay() const override { return 1; }
    using Normal_itf<T>::operator();
    T operator()(T x) override { return filter_(x); }

private:
    Cascade<vela::iir::BiQuad<T>> filter_;
};

}  // namespace vela::filter::lowpass::iir
