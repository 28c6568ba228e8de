#include <algorithm>
#include <cstdint>
#include <vela/codec/v3/lib/encode/DetectSilence.hpp>

namespace vela::codec::v3::encode {

namespace {

constexpr std::uint32_t bits_per_seed = 32;

bool is_active(const Frame& frame, std::uint32_t nr_bitlines) {
    const std::int64_t limit = std::int64_t{1} << std::min(nr_bitlines, 32u);
    return std::ranges::any_of(frame.samples(), [=](int x) { return x < -limit || x > limit; });
}

bool seeds_for(std::uint32_t& nr_seeds, std::size_t nr_channels) {
    switch (nr_channels) {
        case 1:
            nr_seeds = 0;
            return true;
        case 2:
            nr_seeds = 2;
            return true;
        case 3:
            nr_seeds = 5;
            return true;
        default:
            return false;
    }
}

}  // namespace

bool DetectSilence::operator()(Group& group) const {
    if (group.origs.empty()) return false;

    for (const Frame& orig : group.origs)
        if (is_active(orig, group.nr_bitlines)) group.active.push_back(orig);

    if (group.active.empty()) {
        const Frame& first = group.origs.front();
        group.silence = Frame(first.key, first.size());
        group.active.push_back(group.silence);
    }

    std::uint32_t nr_seeds = 0;
    if (!seeds_for(nr_seeds, group.active.size())) return false;
    group.budget.seed_bits = nr_seeds * bits_per_seed;
    return true;
}

}  // namespace vela::codec::v3::encode
