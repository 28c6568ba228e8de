#include <cmath>
#include <vela/downmix/tdl/meta_gain_code.hpp>
#include <vela/numeric/truncate.hpp>

namespace vela::downmix::tdl {

std::uint32_t meta_gain_code(float gain) {
    constexpr std::uint32_t step = 150;  // in 1/100 dB
    constexpr std::uint32_t other = 15;
    const double decades = std::log10(gain);
    const auto shifted =
        static_cast<std::uint32_t>(numeric::truncate_to_int32(decades * 20.0 * 100.0 + 75.0));
    return shifted < (other + 1) * step ? shifted / step : other;
}

}  // namespace vela::downmix::tdl
