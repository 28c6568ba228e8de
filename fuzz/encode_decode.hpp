#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vela/CarrierRecipe.hpp>
#include <vela/carrier/Comparison.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/membership.hpp>
#include <vela/codec/v3/lib/encoder/Factory.hpp>

#include "Bytes.hpp"

namespace vela::fuzz {

/// Encodes a frame or two of made-up audio and takes the carriers apart again.
///
/// Everything is drawn from bytes: layout, frame size (16 to 256), options, metadata, and a kind of
/// signal, a level and a seed for each channel.  What takes long (long frames, many counts of
/// bit-lines, the table of all pairs, dither) is drawn less often, so that rounds are many.
class EncodeDecode {
public:
    explicit EncodeDecode(std::string_view input) : bytes_(input) {}

    /// False if a frame fails that has room to spare, if a block does not decode, or if the error
    /// that a decoder finds is not to the bit that which the encoder tells.
    bool run() {
        if (!prepare_()) return false;
        const unsigned nr_frames = 1 + bytes_.byte() % 2;
        for (unsigned frame = 0; frame < nr_frames; ++frame) {
            make_audio_();
            set_metadata_();
            Frames carriers;
            if (!encoder_->encode_one(carriers, frames_))
                return !has_room_() || broken_("a frame with room to spare fails");
            if (!take_apart_(carriers)) return false;
            ++nr_decoded_;
        }
        return figures_agree_();
    }

    [[nodiscard]] unsigned nr_decoded() const { return nr_decoded_; }

private:
    using Frames = codec::v3::encoder::IEncoder::Frames;
    using Metric = codec::v3::encoder::QualityMetric;

    bool prepare_() {
        const auto recipes = carrier_recipes();
        recipe_ = &recipes[bytes_.byte() % recipes.size()];
        const unsigned size = bytes_.byte();
        frame_size_ = 16u * (1 + size % (size < 32 ? 16 : 6));
        const api::SpeakerLayout input(recipe_->input);
        const unsigned nr_threads = bytes_.byte() % 16 == 1 ? 2 : 0;
        return codec::v3::encoder::create(encoder_, input, api::SpeakerLayout(recipe_->carrier),
                                          nr_threads) &&
               set_options_();
    }

    bool set_options_() {
        constexpr unsigned dither_flag = 1u << 4;
        constexpr int rates[] = {44100, 48000, 96000, 8000};
        const int low = 3 + bytes_.byte() % 10;
        const int wider = bytes_.byte();
        bitline_max_ = low + wider % (wider < 16 ? 13 - low : std::min(13 - low, 3));
        bool good = encoder_->set_option("bitline.min", low) &&
                    encoder_->set_option("bitline.max", bitline_max_) &&
                    encoder_->set_option("sample_rate", rates[bytes_.byte() % 4]) &&
                    encoder_->set_option("gvm.centers_max", 1 + bytes_.byte()) &&
                    encoder_->set_option("gvm.implementation",
                                         std::string(bytes_.byte() % 16 == 1 ? "ref" : "fast"));
        unsigned flags = bytes_.byte();
        if ((flags & 64) == 0) flags &= ~dither_flag;
        unsigned bit = 0;
        for (const char* const key :
             {"gvm.allow_merge", "gvm.update_all", "gvm.randomize_deltas",
              "gvm.force_origin_center", "dither.enabled", "native_content"})
            good = encoder_->set_option(key, static_cast<int>(flags >> bit++ & 1)) && good;
        return good;
    }

    void make_audio_() {
        api::SpeakerLayout(recipe_->input).each_channel([this](const api::Channel& channel) {
            const auto id = static_cast<carrier::ChannelId>(channel.id());
            originals_[id] = signal_();
            auto& frame = frames_.goc(api::ChannelVariant(channel), frame_size_, 24);
            frame.set_data(originals_[id].begin(), originals_[id].end());
            last_ = originals_[id];
            return true;
        });
    }

    /// Silence, noise of some width, a ramp, full scale up and down, or nearly the last channel.
    std::vector<int> signal_() {
        const unsigned kind = bytes_.byte();
        const int limit = 1 << (bytes_.byte() % 24);
        std::minstd_rand engine(bytes_.number(2));
        std::uniform_int_distribution<int> noise(-limit, limit - 1);
        std::vector<int> out(frame_size_);
        for (std::size_t t = 0; t < out.size(); ++t) {
            switch (kind % 5) {
                case 0:
                    break;
                case 1:
                    out[t] = noise(engine);
                    break;
                case 2:
                    out[t] =
                        wrap_(static_cast<std::uint32_t>(limit) * static_cast<std::uint32_t>(t));
                    break;
                case 3:
                    out[t] = t / (1 + limit % 7) % 2 == 0 ? 0x7FFFFF : -0x800000;
                    break;
                default:
                    out[t] = wrap_(
                        static_cast<std::uint32_t>((last_.empty() ? 0 : last_[t]) + noise(engine)));
                    break;
            }
        }
        return out;
    }

    static int wrap_(std::uint32_t sample) { return static_cast<int>(sample << 8) >> 8; }

    static api::ChannelVariant key_of_(carrier::ChannelId id) {
        return api::ChannelVariant(api::Channel::create(id));
    }

    void set_metadata_() {
        const unsigned what = bytes_.byte();
        const auto first = key_of_(recipe_->groups[0].members[0]);
        if (what & 1u) (void)encoder_->set_attn(first, 1.0f + bytes_.byte() / 17.0f);
        if (what & 2u)
            (void)encoder_->set_meta(api::Channel::create(recipe_->groups[0].carrier),
                                     bytes_.byte() / 255.0f);
        if (what & 4u) (void)encoder_->set_orbimix_preset(bytes_.byte());
        if (what & 8u) (void)encoder_->set_room_type(api::RoomType{bytes_.byte() % 4u});
        if (what & 16u) set_loudness_();
    }

    /// Values that can be told; others fail their frame.
    void set_loudness_() {
        struct Limits {
            double low, high;
        };
        constexpr Limits limits[] = {{-35, -2}, {0, 30}, {-35, -2}, {-1, 4}, {-100, 0}, {-100, 0}};
        const std::size_t parameter = bytes_.byte() % std::size(limits);
        const auto [low, high] = limits[parameter];
        api::loudness::Value value;
        value.set_parameter(static_cast<api::loudness::Parameter>(parameter));
        value.set_dimension(3);
        value.set_data(low + (high - low) * bytes_.byte() / 256);
        (void)encoder_->update_loudness(value);
    }

    /// 256 samples with 12 bit-lines hold any record with one center at least.
    [[nodiscard]] bool has_room_() const { return frame_size_ == 256 && bitline_max_ == 12; }

    bool take_apart_(const Frames& carriers) {
        for (const auto& group : sorted_groups_()) {
            const auto* const frame = carriers.find(key_of_(group.carrier));
            carrier::Block block;
            std::string why = "there is no carrier";
            if (!frame || !carrier::decode_block(block, why, frame->samples()) ||
                !carrier::check_recipe(why, block, *recipe_, group) ||
                !comparison_.add(why, block, group.active_members(), originals_, 0))
                return broken_(why);
        }
        return true;
    }

    /// By carrier, the order in which sums of errors are told.
    [[nodiscard]] std::vector<CarrierRecipe::Group> sorted_groups_() const {
        std::vector<CarrierRecipe::Group> groups(recipe_->groups.begin(), recipe_->groups.end());
        std::ranges::sort(groups, {}, &CarrierRecipe::Group::carrier);
        return groups;
    }

    [[nodiscard]] bool figures_agree_() const {
        const auto figures = comparison_.figures();
        return std::ranges::all_of(figures, [this](const auto& entry) {
            return same_(entry.first, Metric::db_rms, entry.second.rms_db) &&
                   same_(entry.first, Metric::db_peak, entry.second.peak_db);
        });
    }

    [[nodiscard]] bool same_(carrier::ChannelId id, Metric metric, double found) const {
        double told = 0;
        if (!encoder_->get_quality_metric(told, key_of_(id), metric))
            return broken_("a channel has no figures");
        if (std::bit_cast<std::uint64_t>(told) == std::bit_cast<std::uint64_t>(found)) return true;
        return broken_("channel " + std::to_string(id) + " is told at " + std::to_string(told) +
                       " dB and found at " + std::to_string(found));
    }

    static bool broken_(const std::string& why) {
        std::cerr << why << std::endl;
        return false;
    }

    Bytes bytes_;
    const CarrierRecipe* recipe_ = nullptr;
    std::uint32_t frame_size_ = 0;
    int bitline_max_ = 0;
    std::shared_ptr<codec::v3::encoder::IEncoder> encoder_;
    carrier::Channels originals_;
    std::vector<int> last_;
    Frames frames_;
    carrier::Comparison comparison_;
    unsigned nr_decoded_ = 0;
};

/// Counts frames that were encoded and decoded in this process, and tells at its end.
struct DecodedFrames {
    std::uint64_t count = 0;

    ~DecodedFrames() {
        std::fprintf(stderr, "Decoded frames: %llu\n", static_cast<unsigned long long>(count));
    }
};
inline DecodedFrames decoded_frames;

/// A run of `EncodeDecode`.
inline bool encode_decode(std::string_view input) {
    EncodeDecode round(input);
    const bool good = round.run();
    decoded_frames.count += round.nr_decoded();
    return good;
}

}  // namespace vela::fuzz
