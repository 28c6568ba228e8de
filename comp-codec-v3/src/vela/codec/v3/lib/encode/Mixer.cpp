#include <vela/codec/v3/lib/encode/Mixer.hpp>
#include <vela/mix/mix.hpp>
#include <vela/numeric/all_fit.hpp>

namespace vela::codec::v3::encode {

namespace {

bool mix_channels(Group& group) {
    const auto& in = group.rescaled;
    switch (group.active.size()) {
        case 1:
            group.mix_seeds.clear();
            group.mixed.assign(in[0].samples().begin(), in[0].samples().end());
            return true;
        case 2:
            group.mix_seeds.resize(2);
            return mix::mix(group.mix_seeds, group.mixed, group.ixs, group.centers_1d,
                            in[0].samples(), in[1].samples());
        case 3:
            group.mix_seeds.resize(5);
            return mix::mix(group.mix_seeds, group.mixed, group.ixs, group.centers_2d,
                            in[0].samples(), in[1].samples(), in[2].samples());
        default:
            return false;
    }
}

}  // namespace

bool Mixer::operator()(Group& group) const {
    group.mixed.resize(group.size());
    if (group.rescaled.size() != group.active.size() || !mix_channels(group)) return false;

    if (group.nr_bitlines > 23) return false;
    group.overflow = !numeric::all_fit(group.mixed, 24 - group.nr_bitlines);
    return true;
}

}  // namespace vela::codec::v3::encode
