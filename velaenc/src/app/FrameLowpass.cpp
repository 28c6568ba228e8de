#include <algorithm>
#include <app/FrameLowpass.hpp>
#include <vela/filter/lowpass/create_normal.hpp>
#include <vela/numeric/truncate.hpp>

namespace app {

namespace {

void cut(std::span<const double> answers, std::span<int> to) {
    std::ranges::transform(answers, to.begin(), vela::numeric::truncate_to_int32);
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
        samples_.assign(raw.samples().begin(), raw.samples().end());
        const std::span answers(samples_);
        (*filter)(answers);
        cut(answers.first(delay), current.goc(key, size, raw.bit_depth).write().last(delay));
        cut(answers.subspan(delay), upcoming.goc(key, size, raw.bit_depth).write());
    }
    return true;
}

bool FrameLowpass::flush(vela::audio::Frames& current) {
    for (auto& [key, frame] : current) {
        const auto filter = filters_.find(key);
        if (filter == filters_.end()) return false;
        samples_.assign(filter->second->delay(), 0.0);
        (*filter->second)(samples_);
        cut(samples_, frame.write().last(samples_.size()));
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
