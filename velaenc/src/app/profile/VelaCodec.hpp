#pragma once

#include <app/WavOutput.hpp>
#include <app/profile/Interface.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <vela/Cache.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/codec/v3/lib/encoder/IEncoder.hpp>
#include <vela/downmix/tdl/Parser.hpp>
#include <vela/file/Name.hpp>

namespace app::profile {

/// The profile of this tool: options and metadata in, carrier WAVs and quality figures out.
///
/// Encoder and output files are made at the first block; options that the encoder refuses fail
/// there.  A metadata file, however, is read and parsed at once.
class VelaCodec : public Interface {
public:
    [[nodiscard]] std::string name() const override { return "VelaCodec v3"; }
    [[nodiscard]] std::string help() const override;
    [[nodiscard]] bool set_option(const std::string& key, const vela::Any& value) override;
    [[nodiscard]] std::uint64_t frame_size() const override { return frame_size_.value_or(1024); }
    [[nodiscard]] bool process_one(vela::audio::Frames& frames,
                                   const vela::api::SampleSpan& span) override;
    [[nodiscard]] bool done() override;
    [[nodiscard]] std::string error_msg() const override { return error_; }
    [[nodiscard]] bool flush() override { return end_all_but_(0); }
    [[nodiscard]] unsigned nr_under_way() const override { return nr_under_way_; }

private:
    /// A linear gain for a channel.
    struct Attn {
        vela::api::ChannelVariant channel;
        float gain = 1.0f;
    };
    /// Reserved for a data file; nothing makes one.
    struct DataStream;

    bool read_downmix_(const vela::file::Name& filename);
    bool set_argument_(const std::string& argument);

    bool get_layouts_(vela::api::SpeakerLayout& input, vela::api::SpeakerLayout& carrier) const;
    bool create_encoder_();
    bool set_encoder_options_();
    bool prepare_output_();
    bool end_all_but_(unsigned nr_left);

    // What holds for a block goes to the encoder before the block does.
    bool feed_metadata_(const vela::api::SampleSpan& span);
    bool set_attn_meta_(const vela::api::SampleSpan& span);
    bool set_orbimix_preset_(const vela::api::SampleSpan& span);
    bool add_loudness_(const vela::api::SampleSpan& span);
    bool set_roomtype_(const vela::api::SampleSpan& span);

    std::optional<vela::SpeakerLayout> speaker_layout_;
    std::optional<std::uint32_t> sample_rate_;
    std::optional<std::uint64_t> frame_size_;
    vela::Cache<std::string> output_format_;  ///< stored, without effect: WAV is all there is
    bool multi_channel_export_ = false;
    std::optional<std::uint32_t> nr_threads_;

    std::uint32_t bitline_min_ = 3;
    std::uint32_t bitline_max_ = 12;
    bool allow_merge_ = true;
    bool update_all_ = false;
    bool force_origin_center_ = false;
    std::string implementation_ = "fast";
    std::uint32_t centers_max_ = 150;
    bool randomize_deltas_ = true;
    bool dither_ = true;
    bool native_content_ = true;
    vela::Cache<vela::file::Name> dbrms_filename_;
    vela::Cache<vela::file::Name> dbpeak_filename_;
    vela::Cache<vela::file::Name> crest_filename_;
    vela::Cache<vela::file::Name> centers_prefix_;

    vela::downmix::tdl::Parser parser_;
    std::vector<Attn> attn_;  ///< by channel id, rebuilt for each block
    std::vector<Attn> meta_;

    std::shared_ptr<vela::codec::v3::encoder::IEncoder> encoder_;
    vela::audio::Frames encoded_;
    unsigned nr_under_way_ = 0;  ///< blocks that came and have not ended
    bool output_enabled_ = false;
    WavOutput output_;
    vela::file::Name data_filename_;  ///< stored, without effect
    std::shared_ptr<DataStream> data_stream_;
    std::string error_;
};

}  // namespace app::profile
