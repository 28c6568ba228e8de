#include <algorithm>
#include <app/FrameLowpass.hpp>
#include <vela/filter/lowpass/create_normal.hpp>
#include <vela/numeric/truncate.hpp>

namespace app {

namespace {

int answer(vela::filter::lowpass::Normal_itf<double>& filter, double sample) {
    return vela::numeric::truncate_to_int32(filter(sample));
}

}  // namespace

bool FrameLowpass::feed(vela::audio::Frames& current, vela::audio::Frames& upcoming,
                        const vela::audio::Frames& input, std::ostream& messages) {
    for (const auto& [key, raw] : input) {
        Filter* const filter = goc_filter_(key, messages);
        if (!filter) return false;
        if (type_ == vela::filter::lowpass::Type::None) {
            upcoming.set(raw);  // shares the samples
            continue;
        }
        const auto size = raw.size();
        const auto delay = filter->delay();
        if (delay > size) {
            messages << "The frame size (" << size << ") cannot be smaller than the filter delay "
                     << delay << std::endl;
            return false;
        }
        const auto filtered = [=](int sample) { return answer(*filter, sample); };
        const auto in = raw.samples();
        const auto end = current.goc(key, size, raw.bit_depth).write().last(delay);
        std::ranges::transform(in.first(delay), end.begin(), filtered);
        const auto begin = upcoming.goc(key, size, raw.bit_depth).write();
        std::ranges::transform(in.subspan(delay), begin.begin(), filtered);
    }
    return true;
}

bool FrameLowpass::flush(vela::audio::Frames& current) {
    for (auto& [key, frame] : current) {
        const auto filter = filters_.find(key);
        if (filter == filters_.end()) return false;
        for (int& sample : frame.write().last(filter->second->delay()))
            sample = answer(*filter->second, 0.0);
    }
    return true;
}

FrameLowpass::Filter* FrameLowpass::goc_filter_(const vela::api::ChannelVariant& key,
                                                std::ostream& messages) {
    auto& filter = filters_[key];
    if (!filter) filter = vela::filter::lowpass::create_normal<double>(type_, freq_, sample_rate_);
    if (!filter)
        messages << "ERROR: Could not create the lowpass: {settings.lowpass_type: " << type_
                 << "}{settings.lowpass_freq: " << freq_ << "}{sample_rate: " << sample_rate_
                 << '}';
    return filter.get();
}

}  // namespace app
