#include <algorithm>
#include <cmath>
#include <vela/audio/Quality.hpp>
#include <vela/audio/decibel.hpp>

namespace vela::audio {

void Quality::update_db(double rms_db, double peak_db) {
    const double rms = db_to_linear(rms_db);
    peak = std::max(peak, std::abs(db_to_linear(peak_db)));
    sum_sq += rms * rms;
    ++count;
}

double Quality::db_rms() const {
    return linear_to_db(rms_());
}

double Quality::db_peak() const {
    return linear_to_db(peak);
}

double Quality::crest() const {
    const double rms = rms_();
    return rms > 1e-150 ? peak / rms : 1.0;
}

double Quality::rms_() const {
    return count == 0 ? 0.0 : std::sqrt(sum_sq / count);
}

}  // namespace vela::audio
