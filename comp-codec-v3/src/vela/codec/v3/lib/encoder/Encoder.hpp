#pragma once

#include <array>
#include <atomic>
#include <condition_variable>
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
/// There is no look-ahead.  Frames influence each other only through the counts of bit-lines and
/// centers that the same carrier chose before, and through the periods of the metadata.  So with
/// threads a carrier goes on to its next frame as soon as it is through with one, whatever the
/// others are at, and hardly anybody waits where a frame ends.
///
///     calling thread    begin k, k+1 |           end k, begin k+2 |         end k+1 |
///     Left                           [ k     ][ k+1           ][ k+2      ]
///     Right                          [ k          ][ k+1     ][ k+2               ]
///
/// All calls come from one thread.  It works with those of the pool until the frame has ended that
/// it is asked for.
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
    [[nodiscard]] bool begin_one(const Frames& in) override;
    [[nodiscard]] bool end_one(Frames& out) override;
    [[nodiscard]] unsigned max_under_way() const override { return max_under_way_; }
    [[nodiscard]] bool get_quality_metric(double& result, const api::ChannelVariant& channel,
                                          QualityMetric metric) const override;

private:
    /// What is known of one loudness parameter, and when it was last sent.
    struct LoudnessInfo {
        api::loudness::Parameter parameter;
        std::int64_t last_sent = -1;                  ///< first sample of that frame; -1 for never
        std::int32_t period = 0;                      ///< samples
        std::array<std::optional<double>, 4> data{};  ///< by dimension
    };

    /// With threads.  Room for two costs two of them 1 per cent, room for six brings nothing.
    static constexpr unsigned most_under_way = 4;
    static constexpr int bitlines_allowed_min = 3;
    static constexpr int bitlines_allowed_max = 12;

    using GroupPtr = std::shared_ptr<encode::Group>;
    using Code = encode::Chain::Code;

    /// The search for the best candidate of one carrier of one frame.
    struct Search {
        GroupPtr draft;         ///< what all candidates have in common
        GroupPtr best;          ///< of the candidates so far, if any has a score
        bool is_muxed = false;  ///< what the muxer says of the best
    };

    /// A carrier from frame to frame.  Threads that work on different ones find little here that
    /// another has written: to fetch that costs as much as some hundred operations.
    struct alignas(cache_line) Carrier {
        // The calling thread hands drafts over, and takes what came of them.
        std::array<Search, most_under_way> searches;  ///< of the frames under way; a ring
        std::atomic<unsigned> nr_under_way = 0;       ///< frames

        // For who works on the carrier.
        alignas(cache_line) std::uint64_t nr_finished = 0;  ///< frames
        std::optional<std::uint32_t> prev_bitlines;
        /// Numbers of centers used with two and with three channels, by count of bit-lines: only
        /// one candidate of a frame asks for each.
        std::array<std::pair<std::uint32_t, std::uint32_t>, bitlines_allowed_max + 1>
            prev_centers{};
        SpareGroups spare_groups;
        std::mutex best_mutex;  ///< guards the best while candidates are at work
    };

    /// A frame under way.
    struct Turn {
        api::SampleSpan span;
        std::atomic<std::size_t> nr_unfinished = 0;  ///< carriers
        std::atomic<unsigned> nr_failures = 0;       ///< of its candidates
    };

    void set_sample_rate_(unsigned rate);
    bool set_bitlines_(std::uint32_t& target, const std::string& key, int value);

    // The begin of a frame.
    bool encode_one_();
    bool downmix_();
    bool select_loudness_(const api::SampleSpan& span);
    bool process_groups_();
    bool add_groups_();
    bool add_(const Frames& frames, const CarrierRecipe::Group& recipe);
    GroupPtr start_draft_(Carrier& carrier) const;
    bool set_origs_(encode::Group& group, const api::ChannelVariant& key,
                    const Frames& frames) const;
    void set_carrier_(encode::Group& group, const api::Channel& carrier) const;
    void set_metadata_(encode::Group& group) const;
    void begin_turn_();
    bool start_threads_();
    void update_cyclers_();

    // Its candidates.
    [[nodiscard]] Search& current_(Carrier& carrier) const;
    [[nodiscard]] Turn& turn_of_(const Carrier& carrier);
    void search_(Carrier& carrier);
    void work_(const Turn* last = nullptr);
    void try_(Carrier& carrier, const CandidateQueue::Candidate& candidate);
    static GroupPtr create_group_(Carrier& carrier, const CandidateQueue::Candidate& candidate);
    void select_best_(Carrier& carrier, GroupPtr& group) const;
    void finish_(Carrier& carrier);

    // Its end.
    bool end_groups_();
    void work_until_ended_(const Turn& turn);
    bool finish_frame_(std::uint64_t frame);
    bool finish_winner_(const Search& search, Frames& out);

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

    /// All of the output layout, from the start.
    std::map<api::ChannelVariant, Carrier> carriers_;
    CandidateQueue queue_;
    std::array<Turn, most_under_way> turns_;  ///< a ring
    std::uint64_t nr_begun_ = 0;              ///< frames
    std::uint64_t nr_ended_ = 0;
    std::mutex ended_mutex_;
    std::condition_variable ended_cv_;  ///< for who waits until a frame has ended

    encode::Chain chain_;
    encode::Muxer muxer_;
    CandidateLog candidate_log_;
    std::uint64_t nr_at_once_;  ///< candidates worked on at the same time
    unsigned max_under_way_;
    thread::Pool pool_;
};

}  // namespace vela::codec::v3::encoder
