#pragma once

#include <cmath>
#include <complex>
#include <numbers>

namespace vela::filter::lowpass {

/// The point of the unit circle that stands for one sample of delay at `freq` Hz.
inline std::complex<double> delay_at(double freq, double rate) {
    return std::polar(1.0, -2 * std::numbers::pi * freq / rate);
}

inline double gain_db(const std::complex<double>& response) {
    return 20 * std::log10(std::abs(response));
}

/// The first frequency from `from` upwards, in steps of 10 Hz, at which `gain` is below `level`.
template <typename Gain>
double first_below(double level, double from, Gain gain) {
    while (gain(from) >= level)
        from += 10;
    return from;
}

}  // namespace vela::filter::lowpass
