#include <vela/carrier/scale.hpp>
#include <vela/limiter/scaler.hpp>
#include <vela/numeric/truncate.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::carrier {

namespace {

constexpr std::uint32_t mute_ix = 255;

/// 1 for an index that no block has.
float gain_of(std::uint32_t ix) {
    float gain = 1.0f;
    const bool known = ix <= mute_ix && limiter::ix_to_scaler(gain, static_cast<unsigned char>(ix));
    return known ? gain : 1.0f;
}

void multiply(std::span<int> samples, float gain) {
    for (int& x : samples)
        x = numeric::truncate_to_int32(static_cast<float>(x) * gain);
}

}  // namespace

void restore_level(std::span<int> samples, unsigned nr_bitlines, std::uint32_t group_scaler_ix) {
    const int step = 1 << nr_bitlines;
    if (group_scaler_ix != 0) {
        multiply(samples, static_cast<float>(step) * gain_of(group_scaler_ix));
        return;
    }
    for (int& x : samples)
        x = numeric::wrap_mul(x, step);
}

void attenuate(std::span<int> samples, std::uint32_t attenuation_ix) {
    if (attenuation_ix == 0) return;
    const float gain = gain_of(attenuation_ix);
    for (int& x : samples)
        x = numeric::truncate_to_int32(static_cast<float>(x) / gain);
}

void undo_attenuation(std::span<int> samples, std::uint32_t attenuation_ix) {
    if (attenuation_ix == 0 || attenuation_ix == mute_ix) return;
    multiply(samples, gain_of(attenuation_ix));
}

}  // namespace vela::carrier
