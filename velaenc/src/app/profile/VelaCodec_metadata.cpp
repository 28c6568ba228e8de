// From the time lines of the metadata file to the encoder, block by block.

#include <app/profile/VelaCodec.hpp>
#include <cmath>
#include <vela/downmix/tdl/meta_channel.hpp>

namespace app::profile {

namespace {

using vela::api::Channel;
using vela::api::ChannelVariant;
using vela::api::SampleSpan;

// The entry that holds in a block: the last one before its end.  An entry that falls inside the
// block thus already holds for all of it.
template <typename T>
const T* in_force(const std::map<std::uint64_t, T>& time_line, const SampleSpan& span) {
    const auto after = time_line.lower_bound(static_cast<std::uint64_t>(span.stop));
    return after == time_line.begin() ? nullptr : &std::prev(after)->second;
}

float to_linear(float db) {
    return static_cast<float>(std::pow(10.0, db / 20.0));
}

}  // namespace

bool VelaCodec::feed_metadata_(const SampleSpan& span) {
    return set_attn_meta_(span) && set_orbimix_preset_(span) && add_loudness_(span) &&
           set_roomtype_(span);
}

bool VelaCodec::set_attn_meta_(const SampleSpan& span) {
    if (!encoder_) return false;
    vela::api::SpeakerLayout input;
    vela::api::SpeakerLayout carrier;
    if (!get_layouts_(input, carrier)) return false;

    const auto reset = [](std::vector<Attn>& gains) {
        return [&gains](const Channel& channel) {
            if (gains.size() <= channel.id()) gains.resize(channel.id() + 1);
            gains[channel.id()] = {ChannelVariant(channel), 1.0f};
            return true;
        };
    };
    if (!input.each_channel(reset(attn_)) || !carrier.each_channel(reset(meta_))) return false;

    if (const auto* const entry = in_force(parser_.attn, span))
        for (const auto& [channel, db] : *entry)
            if (channel.id() < attn_.size()) attn_[channel.id()].gain = to_linear(db);

    if (const auto* const entry = in_force(parser_.meta, span))
        for (const auto& [chix, db] : *entry) {
            Channel channel;
            if (!vela::downmix::tdl::meta_chix_to_channel(channel, chix, carrier)) return false;
            if (channel.valid() && channel.id() < meta_.size())
                meta_[channel.id()].gain = to_linear(db);
        }

    return input.each_channel([this](const Channel& channel) {
        const Attn& attn = attn_[channel.id()];
        return encoder_->set_attn(attn.channel, attn.gain);
    }) && carrier.each_channel([this](const Channel& channel) {
        const Attn& meta = meta_[channel.id()];
        return encoder_->set_meta(meta.channel.channel, meta.gain);
    });
}

bool VelaCodec::set_orbimix_preset_(const SampleSpan& span) {
    if (!encoder_) return false;
    const auto* const preset = in_force(parser_.orbimix_preset, span);
    return encoder_->set_orbimix_preset(preset ? static_cast<int>(*preset) : -1);
}

bool VelaCodec::add_loudness_(const SampleSpan& span) {
    if (!encoder_) return false;
    const auto& events = parser_.loudness;
    const auto first = events.lower_bound(static_cast<std::uint64_t>(span.start));
    const auto last = events.lower_bound(static_cast<std::uint64_t>(span.stop));
    for (auto event = first; event != last; ++event)
        for (const auto& value : event->second)
            if (!encoder_->update_loudness(value)) return false;
    return true;
}

bool VelaCodec::set_roomtype_(const SampleSpan& span) {
    if (!encoder_) return false;
    // A room type that the encoder refuses does not stop the run.
    if (const auto* const room_type = in_force(parser_.room_type, span))
        static_cast<void>(encoder_->set_room_type(*room_type));
    return true;
}

}  // namespace app::profile
