#pragma once

#include <vector>
#include <vela/filter/lowpass/Normal_itf.hpp>
#include <vela/fir/Filter.hpp>

namespace vela::filter::lowpass::fir {

/// Linear phase: all frequencies lag by half the taps.
template <typename T>
class Normal : public Normal_itf<T> {
public:
    explicit Normal(const std::vector<T>& coefs) : filter_(coefs) {}

    /// Rounded down, where an even number of taps puts the center between two samples.
    [[nodiscard]] unsigned delay() const override {
        return static_cast<unsigned>(filter_.nr_taps() >> 1);
    }
    T operator()(T x) override { return filter_(x); }
    void operator()(std::span<T> samples) override { filter_(samples); }

private:
    vela::fir::Filter<T> filter_;
};

}  // namespace vela::filter::lowpass::fir
