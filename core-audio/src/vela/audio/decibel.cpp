#include <cmath>
#include <vela/audio/decibel.hpp>

namespace vela::audio {

double linear_to_db(double linear) {
    return linear > 1e-150 ? 20.0 * std::log10(linear) : silence_db;
}

double db_to_linear(double dB) {
    return dB <= silence_db ? 0.0 : std::pow(10.0, dB / 20.0);
}

double dB_delta_peak_container(const Delta& delta, int full_scale, double floor_db) {
    const double ratio = static_cast<double>(delta.peak) / full_scale;
    if (ratio <= std::pow(10.0, floor_db / 20.0)) return floor_db;
    return 20.0 * std::log10(ratio);
}

}  // namespace vela::audio
