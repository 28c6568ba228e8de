#include <algorithm>
#include <vela/codec/v3/lib/encode/Chain.hpp>

namespace vela::codec::v3::encode {

Chain::Chain() {
    cluster_deltas.filter = filter_;
    compute_quality.filter = filter_;
}

// Of the stages ahead of the clustering, which asks the filter itself, only the draw of the dither
// leaves a trace.  So a candidate that would be dropped there can be dropped here, if none of them
// would fail: they refuse other counts of bit-lines and channels, and frames too short for deltas
// or too long for the dither.  With all counts of bit-lines two of three candidates end here.
bool Chain::is_pointless_(const Group& group, std::uint32_t nr_bitlines) const {
    constexpr std::uint32_t fewest_bitlines = 3, most_bitlines = 16;
    constexpr std::size_t shortest = 6, longest = 4096;
    const std::size_t size = group.size();
    const bool nothing_can_fail =
        nr_bitlines >= fewest_bitlines && nr_bitlines <= most_bitlines && group.scaler_ix == 0 &&
        size >= shortest && size <= longest && !group.origs.empty() && group.origs.size() <= 3 &&
        std::ranges::all_of(group.origs, [=](const Frame& f) { return f.size() == size; });
    return nothing_can_fail && filter_->check(group.frame.key, nr_bitlines) != 0;
}

Chain::Code Chain::operator()(Group& group) {
    if (drops(group, group.nr_bitlines)) return Code::filtered;
    if (!detect_silence(group)) return Code::failure;

    group.overflow = true;
    while (true) {
        if (const auto code = attempt_(group); code != Code::ok) return code;
        if (!group.overflow) return Code::ok;
        ++group.scaler_ix;
        ++group.trace.retries;
    }
}

Chain::Code Chain::attempt_(Group& group) {
    if (!rescaler(group)) return Code::failure;
    if (!compute_deltas(group)) return Code::failure;
    if (const auto code = cluster_deltas(group); code != Code::ok) return code;
    if (!mixer(group)) return Code::failure;
    if (!compute_quality(group)) return Code::failure;
    return Code::ok;
}

}  // namespace vela::codec::v3::encode
