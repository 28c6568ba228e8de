#include <array>
#include <vela/filter/lowpass/find_design.hpp>
#include <vela/filter/lowpass/iir/get_coefs.hpp>

namespace vela::filter::lowpass::iir {

namespace {

using Tables = std::array<std::vector<Coef>, design_count>;

// All zeros of the sections lie on the unit circle.
constexpr Coef section(double b1, double a1, double a2, double gain) {
    return {1.0, b1, 1.0, a1, a2, gain};
}

// clang-format off
// In the order of `Design`.  Together the sections have 0.05 dB of ripple in the pass band, the
// gain at 0 Hz being its low end.
const Tables& tables() {
    static const Tables designs{{
        {   // 88200 / 36000
            section(1.9262065963380297, 1.3454279208259492,  0.6591364918695206,  1.7536988938378848),
            section(1.9888608765783402, 0.8031691285234982,  0.22342601499427708, 6.791463189233173),
            section(1.8767379248920801, 1.6394822637323117,  0.9116140671290753,  0.029730629893292143),
        },
        {   // 88200 / 38000
            section(1.9588336487608224, 1.536413921926303,   0.7248027975228365,  1.8878134008319887),
            section(1.9938294713594629, 1.0509034674878033,  0.3232964075072938,  7.946447219400999),
            section(1.9308518702124078, 1.7742812715554463,  0.9313953460919218,  0.030597711028665108),
        },
        {   // 88200 / 40000
            section(1.9816207467830176, 1.7122698843887887,  0.8023963907004728,  2.022883448181163),
            section(1.997258501969515,  1.3266918220756805,  0.4690797265768242,  9.349420408077528),
            section(1.9690066560595554, 1.8805711735945323,  0.9527171150464487,  0.03134712782787112),
        },
        {   // 96000 / 36000
            section(1.8587378327786785, 1.048180201297409,   0.5833466358357785,  1.562820818202237),
            section(1.9783607360397988, 0.48198315867084424, 0.13516436114597635, 5.433638254012115),
            section(1.7667275562675002, 1.3960959255971555,  0.8859910664527252,  0.028280948988280798),
        },
        {   // 96000 / 38000
            section(1.9040144403534747, 1.236905971768186,   0.6282338398575676,  1.681825997007149),
            section(1.985441098298945,  0.6785831100539405,  0.18378259449148746, 6.246457843099859),
            section(1.8402740987988488, 1.5550798233153467,  0.9015978412876292,  0.02921492394726525),
        },
        {   // 96000 / 40000
            section(1.9396476412906045, 1.4185061272147979,  0.682397776047405,   1.8037551517314676),
            section(1.99091620740544,   0.8930847611175663,  0.2563910108253819,  7.1995472707242305),
            section(1.8989575173268258, 1.6932216659379493,  0.9188345073853872,  0.03006866124289224),
        },
    }};
    return designs;
}
// clang-format on

}  // namespace

const std::vector<Coef>* get_coefs(unsigned freq, unsigned sample_rate) {
    const auto design = find_design(freq, sample_rate);
    return design ? &tables()[static_cast<std::size_t>(*design)] : nullptr;
}

}  // namespace vela::filter::lowpass::iir
