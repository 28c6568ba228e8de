#include <algorithm>
#include <array>
#include <vela/filter/lowpass/fir/get_coefs.hpp>
#include <vela/filter/lowpass/fir/taps.hpp>

namespace vela::filter::lowpass::fir {

namespace {

using Tables = std::array<std::vector<double>, design_count>;

std::vector<double> mirrored(const HalfTaps& source) {
    std::vector<double> taps(source.nr_taps);
    std::ranges::copy(source.half, taps.begin());
    std::ranges::copy(source.half, taps.rbegin());
    return taps;
}

Tables make_tables() {
    Tables tables;
    for (std::size_t i = 0; i < design_count; ++i)
        tables[i] = mirrored(half_taps(static_cast<Design>(i)));
    return tables;
}

}  // namespace

const std::vector<double>* get_coefs(unsigned freq, unsigned sample_rate) {
    static const Tables tables = make_tables();
    const auto design = find_design(freq, sample_rate);
    return design ? &tables[static_cast<std::size_t>(*design)] : nullptr;
}

}  // namespace vela::filter::lowpass::fir
