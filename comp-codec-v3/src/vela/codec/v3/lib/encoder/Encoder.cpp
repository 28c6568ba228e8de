#include <algorithm>
#include <iostream>
#include <utility>
#include <vela/OnRAII.hpp>
#include <vela/Strange.hpp>
#include <vela/codec/v3/lib/encoder/Encoder.hpp>
#include <vela/downmix/tdl/meta_channel.hpp>
#include <vela/downmix/tdl/meta_gain_code.hpp>
#include <vela/limiter/scaler.hpp>
#include <vela/loudness/codec/encode.hpp>
#include <vela/numeric/truncate.hpp>
#include <vela/pcm/scale.hpp>
#include <vela/thread/processors.hpp>

namespace vela::codec::v3::encoder {

namespace {

using api::loudness::Parameter;

constexpr Version encoded_version{3, 2, 0};  // patch levels do not change what is written

// Repetition periods, as parts of a second.
constexpr double momentary_period = 0.0833;
constexpr double short_term_period = 0.3125;
constexpr double slow_period = 0.9583;

bool parse_version(Version& version, const char* text) {
    Strange cursor{std::string(text)};
    if (!cursor.pop_int(version.major) || !cursor.pop_if(".") || !cursor.pop_int(version.minor))
        return false;
    version.patch = 0;
    if (cursor.pop_if(".") && !cursor.pop_int(version.patch)) version.patch = 0;
    return true;
}

}  // namespace

Encoder::Encoder(const api::SpeakerLayout& input, const api::SpeakerLayout& output,
                 unsigned nr_threads)
    : input_layout_(input),
      output_layout_(output),
      nr_at_once_(std::min(nr_threads, thread::nr_processors())),
      max_under_way_(nr_at_once_ > 1 ? most_under_way : 1),
      pool_(nr_threads) {
    output_layout_.each_channel([this](const api::Channel& channel) {
        return carriers_.try_emplace(api::ChannelVariant(channel)).second;
    });
    // The fixed cost of the record is spread: the version waits one frame, the hash two.
    if (parse_version(own_version_, version_text)) version_.set_value(own_version_, 1);
    unsigned hash = 0;
    if (Strange(std::string(build_hash_text)).pop_int(hash, 16)) git_hash_.set_value(hash, 2);
    chain_.drop_early = !candidate_log_.is_open();
}

bool Encoder::set_option(const std::string& key, int value) {
    auto& clustering = chain_.cluster_deltas.settings;
    const std::pair<const char*, bool&> flags[] = {
        {"gvm.allow_merge", clustering.allow_merge},
        {"gvm.update_all", clustering.update_all},
        {"gvm.force_origin_center", clustering.force_origin_center},
        {"gvm.randomize_deltas", clustering.randomize_deltas},
        {"dither.enabled", dither_},
        {"native_content", muxer_.native_content}};
    for (auto& [name, flag] : flags)
        if (key == name) {
            flag = value != 0;
            return true;
        }
    if (key == "bitline.min") return set_bitlines_(bitline_min_, key, value);
    if (key == "bitline.max") return set_bitlines_(bitline_max_, key, value);
    if (key == "sample_rate") {
        set_sample_rate_(static_cast<unsigned>(value));
        return true;
    }
    if (key == "gvm.centers_max") {
        if (value < 1) return false;
        centers_max_ = static_cast<std::uint32_t>(value);
        return true;
    }
    return false;
}

bool Encoder::set_bitlines_(std::uint32_t& target, const std::string& key, int value) {
    if (value < bitlines_allowed_min || value > bitlines_allowed_max) {
        std::cerr << key << " is out of the allowed range [" << bitlines_allowed_min << ','
                  << bitlines_allowed_max << "]\n";
        return false;
    }
    target = static_cast<std::uint32_t>(value);
    return true;
}

bool Encoder::set_option(const std::string& key, const std::string& value) {
    if (key == "gvm.implementation") {
        chain_.cluster_deltas.settings.implementation = value;
        return true;
    }
    return plots_.set_option(key, value);
}

void Encoder::set_sample_rate_(unsigned rate) {
    sample_rate_ = rate;
    const auto samples = [=](double seconds) { return numeric::truncate_to_int32(seconds * rate); };
    const auto add = [&](Parameter parameter, double seconds) {
        loudness_infos_.push_back({.parameter = parameter, .period = samples(seconds)});
    };
    add(Parameter::MomentaryLoudness, momentary_period);
    add(Parameter::ShortTermLoudness, short_term_period);
    for (const auto parameter : {Parameter::ProgramLoudness, Parameter::ProgramLoudnessRange,
                                 Parameter::SpeechLoudness, Parameter::MaximumTruePeak})
        add(parameter, slow_period);

    const auto period = static_cast<std::uint32_t>(slow_period * rate);  // up to all 32 bits
    meta_.set_period(period);
    preset_.set_period(period);
    room_type_.set_period(period);
    version_.set_period(period);
    git_hash_.set_period(period);
}

bool Encoder::set_attn(const api::ChannelVariant& channel, float gain) {
    float scaler = 1.0f;
    return limiter::scaler_to_ix(attn_ix_[channel], scaler, gain);
}

bool Encoder::set_meta(const api::Channel& channel, float gain) {
    if (!output_layout_.test(channel)) return true;
    unsigned chix = 0;
    if (!downmix::tdl::meta_channel_to_chix(chix, channel, output_layout_)) return false;
    pending_meta_ |= downmix::tdl::meta_gain_code(gain) << (4 * chix);
    return true;
}

bool Encoder::set_orbimix_preset(int preset) {
    preset_.set_value(preset);
    return true;
}

bool Encoder::set_room_type(const api::RoomType& room_type) {
    room_type_.set_value(room_type);
    return true;
}

bool Encoder::update_loudness(const api::loudness::Value& value) {
    for (LoudnessInfo& info : loudness_infos_) {
        if (info.parameter != value.parameter()) continue;
        if (value.dimension() >= info.data.size()) return false;
        info.data[value.dimension()] = value.data();
    }
    return true;
}

bool Encoder::get_quality_metric(double& result, const api::ChannelVariant& channel,
                                 QualityMetric metric) const {
    const auto at = quality_.find(channel);
    if (at == quality_.end()) return false;
    switch (metric) {
        case QualityMetric::db_rms:
            result = at->second.db_rms();
            break;
        case QualityMetric::db_peak:
            result = at->second.db_peak();
            break;
        case QualityMetric::crest:
            result = at->second.crest();
            break;
    }
    return true;
}

bool Encoder::encode_one(Frames& out, const Frames& in) {
    return begin_one(in) && end_one(out);
}

bool Encoder::begin_one(const Frames& in) {
    if (nr_begun_ - nr_ended_ == max_under_way_) return false;
    if (own_version_.major != encoded_version.major || own_version_.minor != encoded_version.minor)
        return false;

    input_pingpong_ = std::make_unique<thread::PingPong<Frames>>();
    const OnRAII drop([this] { input_pingpong_.reset(); });
    {
        auto push = input_pingpong_->start_filling();
        if (!push) return false;
        *push = in;
    }
    return encode_one_();
}

bool Encoder::end_one(Frames& out) {
    if (nr_ended_ == nr_begun_) return false;

    output_pingpong_ = std::make_unique<thread::PingPong<Frames>>();
    const OnRAII drop([this] { output_pingpong_.reset(); });
    if (!end_groups_()) return false;

    auto pop = output_pingpong_->start_draining();
    if (!pop) return false;
    out = std::move(*pop);
    return true;
}

bool Encoder::encode_one_() {
    if (!downmix_()) return false;
    if (!select_loudness_(span_)) return false;
    meta_.set_value(pending_meta_);
    if (!process_groups_()) return false;
    update_cyclers_();
    return true;
}

void Encoder::update_cyclers_() {
    preset_.update(span_);
    room_type_.update(span_);
    version_.update(span_);
    git_hash_.update(span_);
    meta_.update(span_);
    pending_meta_ = 0;
}

bool Encoder::downmix_() {
    if (!input_pingpong_) return false;
    const auto in = input_pingpong_->start_draining();
    if (!in) return false;

    unsigned bit_depth = 0;
    if (!in->bit_depth(bit_depth)) {
        std::cerr << "Could not get the bit depth of the input frames\n";
        return false;
    }
    if (bit_depth != 24) {
        std::cout << "Only 24bit input is supported, not " << bit_depth << std::endl;
        return false;
    }
    std::uint64_t frame_size = 0;
    if (!in->frame_size(frame_size)) return false;
    span_ = {span_.stop, span_.stop + static_cast<std::int64_t>(frame_size)};

    auto out = downmixed_.start_filling();
    if (!out) return false;
    for (const auto& [key, frame] : *in) {
        auto& attenuated = out->goc(key);
        attenuated = frame;
        const std::uint8_t ix = attn_ix_[key];
        if (ix == 0) continue;
        float scaler = 1.0f;
        if (!limiter::ix_to_scaler(scaler, ix)) return false;
        if (!pcm::divide_by(scaler, attenuated)) return false;
    }
    return true;
}

bool Encoder::select_loudness_(const api::SampleSpan& span) {
    loudness_.reset();
    for (LoudnessInfo& info : loudness_infos_) {
        const auto& data = info.data;
        if (!data[3]) continue;
        const bool due = info.last_sent < 0 || info.last_sent + info.period < span.start;
        if (!due) continue;

        unsigned code = 0;
        if (!loudness::codec::encode(code, info.parameter, *data[3], data[2] ? &*data[2] : nullptr,
                                     data[1] ? &*data[1] : nullptr))
            return false;
        loudness_ = {info.parameter, code};
        info.last_sent = span.start;
        // Values of the moment are used up; the others repeat at their period.
        if (info.parameter == Parameter::ShortTermLoudness ||
            info.parameter == Parameter::MomentaryLoudness)
            info.data = {};
        break;
    }
    return true;
}

}  // namespace vela::codec::v3::encoder
