#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <vela/CarrierRecipe.hpp>
#include <vela/audio/Quality.hpp>
#include <vela/cache_line.hpp>
#include <vela/codec/Version.hpp>
#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/Muxer.hpp>
#include <vela/codec/v3/lib/encoder/CandidateLog.hpp>
#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>
#include <vela/codec/v3/lib/encoder/Cycler.hpp>
#include <vela/codec/v3/lib/encoder/IEncoder.hpp>
#include <vela/codec/v3/lib/encoder/Plots.hpp>
#include <vela/codec/v3/lib/encoder/SpareGroups.hpp>
#include <vela/thread/PingPong.hpp>
#include <vela/thread/Pool.hpp>

namespace vela::codec::v3::encoder {

/// The one encoder: for every frame and carrier channel it tries every allowed count of bit-lines
/// and keeps the candidate with the lowest error.
///
/// There is no look-ahead: frame k in gives frame k out in the same call.  Frames influence each
/// other only through the counts of bit-lines and centers chosen before and through the periods of
/// the metadata.  All calls come from one thread; the pool's threads run candidates, serialise
/// winners, and do errands between two frames.
class Encoder : public IEncoder {
public:
    /// The pair of layouts must be one of `carrier_recipes()`; `create` makes sure of it.
    Encoder(const api::SpeakerLayout& input, const api::SpeakerLayout& output, unsigned nr_threads);

    [[nodiscard]] const api::SpeakerLayout& input_layout() const override { return input_layout_; }
    [[nodiscard]] const api::SpeakerLayout& output_layout() const override {
        return output_layout_;
    }

    [[nodiscard]] bool set_option(const std::string& key, int value) override;
    [[nodiscard]] bool set_option(const std::string& key, const std::string& value) override;
    [[nodiscard]] bool set_attn(const api::ChannelVariant& channel, float gain) override;
    [[nodiscard]] bool set_meta(const api::Channel& channel, float gain) override;
    [[nodiscard]] bool set_orbimix_preset(int preset) override;
    [[nodiscard]] bool update_loudness(const api::loudness::Value& value) override;
    [[nodiscard]] bool set_room_type(const api::RoomType& room_type) override;
    [[nodiscard]] bool encode_one(Frames& out, const Frames& in) override;
    [[nodiscard]] bool get_quality_metric(double& result, const api::ChannelVariant& channel,
                                          QualityMetric metric) const override;
    [[nodiscard]] thread::Errands* errands() override {
        return nr_at_once_ > 1 ? &pool_.errands() : nullptr;
    }

private:
    /// What is known of one loudness parameter, and when it was last sent.
    struct LoudnessInfo {
        api::loudness::Parameter parameter;
        std::int64_t last_sent = -1;                  ///< first sample of that frame; -1 for never
        std::int32_t period = 0;                      ///< samples
        std::array<std::optional<double>, 4> data{};  ///< by dimension
    };

    static constexpr int bitlines_allowed_min = 3;
    static constexpr int bitlines_allowed_max = 12;

    using GroupPtr = std::shared_ptr<encode::Group>;
    using Code = encode::Chain::Code;

    /// A carrier from frame to frame.  Threads that work on different ones find nothing here that
    /// another has written: to fetch that costs as much as some hundred operations.
    struct alignas(cache_line) Carrier {
        GroupPtr draft;  ///< what all candidates of a frame have in common
        std::optional<std::uint32_t> prev_bitlines;
        /// Numbers of centers used with two and with three channels, by count of bit-lines: only
        /// one candidate of a frame asks for each.
        std::array<std::pair<std::uint32_t, std::uint32_t>, bitlines_allowed_max + 1>
            prev_centers{};
        SpareGroups spare_groups;

        GroupPtr best;          ///< of the candidates so far, if any has a score
        std::mutex best_mutex;  ///< guards it while candidates are at work
        bool is_muxed = false;  ///< what the muxer says of the best
    };

    void set_sample_rate_(unsigned rate);
    bool set_bitlines_(std::uint32_t& target, const std::string& key, int value);

    // One frame.
    bool encode_one_();
    bool downmix_();
    bool select_loudness_(const api::SampleSpan& span);
    bool process_groups_();
    void forget_winners_();
    void update_cyclers_();

    // The candidates of a frame.
    bool start_threads_();
    bool queue_candidates_();
    bool add_groups_(const Frames& frames);
    bool add_(const Frames& frames, const CarrierRecipe::Group& recipe);
    GroupPtr start_draft_(Carrier& carrier) const;
    bool set_origs_(encode::Group& group, const api::ChannelVariant& key,
                    const Frames& frames) const;
    void set_carrier_(encode::Group& group, const api::Channel& carrier) const;
    void set_metadata_(encode::Group& group) const;
    void work_();
    void try_(const CandidateQueue::Candidate& candidate);
    static GroupPtr create_group_(Carrier& carrier, const CandidateQueue::Candidate& candidate);
    static void select_best_(Carrier& carrier, GroupPtr& group);
    void mux_finished_();

    // The winners of a frame.
    bool finish_frame_();
    bool remember_bitlines_();
    bool finish_winner_(const Carrier& carrier, Frames& out);

    unsigned sample_rate_ = 0;
    api::SpeakerLayout input_layout_;
    api::SpeakerLayout output_layout_;
    Plots plots_;
    std::map<api::ChannelVariant, audio::Quality> quality_;
    api::SampleSpan span_;
    std::map<api::ChannelVariant, std::uint8_t> attn_ix_;

    std::uint32_t pending_meta_ = 0;
    Cycler<unsigned> meta_;
    Cycler<int> preset_;
    std::vector<LoudnessInfo> loudness_infos_;
    std::optional<encode::Group::Loudness> loudness_;
    Cycler<api::RoomType> room_type_;
    Version own_version_{};
    Cycler<Version> version_;
    Cycler<unsigned> git_hash_;

    std::uint32_t bitline_min_ = 0;
    std::uint32_t bitline_max_ = 0;
    bool dither_ = true;
    std::uint32_t centers_max_ = 150;

    std::unique_ptr<thread::PingPong<Frames>> input_pingpong_;
    thread::PingPong<Frames> downmixed_;
    std::unique_ptr<thread::PingPong<Frames>> output_pingpong_;

    /// All are there before threads look for one.
    std::map<api::ChannelVariant, Carrier> carriers_;
    CandidateQueue queue_;
    std::atomic<unsigned> nr_failures_ = 0;  ///< of the candidates of this frame

    encode::Chain chain_;
    encode::Muxer muxer_;
    CandidateLog candidate_log_;
    std::uint64_t nr_at_once_;  ///< candidates worked on at the same time
    thread::Pool pool_;
};

}  // namespace vela::codec::v3::encoder
