#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vela/carrier/Tally.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::carrier {

namespace {

constexpr double floor_db = -144.0;
constexpr double silence_db = -3000.0;
constexpr double silence = 1e-150;

double linear_of(double db) {
    return db <= silence_db ? 0.0 : std::pow(10.0, db / 20.0);
}

double db_of(double linear) {
    return linear <= silence ? silence_db : 20.0 * std::log10(linear);
}

}  // namespace

BlockError error_of(std::span<const int> original, std::span<const int> rebuilt) {
    constexpr double floor_of_square = 3.9810717055349695e-15;  // -144 dB
    constexpr double full_scale = 8388608.0;
    double sum = 0;
    std::int32_t largest = 0;
    for (std::size_t t = 0; t < original.size(); ++t) {
        const std::int32_t difference = numeric::wrap_sub(original[t], rebuilt[t]);
        sum += static_cast<double>(difference) * difference;
        largest = std::max(largest, numeric::wrap_abs(difference));
    }
    const double square =
        sum / static_cast<double>(original.size()) * (1 / full_scale) * (1 / full_scale);
    const double peak = largest / full_scale;
    return {square <= floor_of_square ? floor_db : 10.0 * std::log10(square),
            peak <= linear_of(floor_db) ? floor_db : 20.0 * std::log10(peak)};
}

void Tally::add(double rms_db, double peak_db) {
    const double rms = linear_of(rms_db);
    sum_of_squares_ += rms * rms;
    peak_ = std::max(peak_, std::abs(linear_of(peak_db)));
    ++count_;
}

Figures Tally::figures() const {
    const double rms = count_ == 0 ? 0.0 : std::sqrt(sum_of_squares_ / count_);
    return {db_of(rms), db_of(peak_), rms <= silence ? 1.0 : peak_ / rms};
}

}  // namespace vela::carrier
