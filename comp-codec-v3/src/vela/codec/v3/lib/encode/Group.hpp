#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>
#include <vela/api/SampleSpan.hpp>
#include <vela/api/SpeakerLayout.hpp>
#include <vela/api/loudness/Parameter.hpp>
#include <vela/audio/Frame.hpp>
#include <vela/codec/Version.hpp>
#include <vela/codec/zvk/ZVK.hpp>

namespace vela::codec::v3::encode {

using audio::Frame;
using audio::Frames;

/// One candidate: one carrier channel of one frame at one count of bit-lines, with all that the
/// stages compute for it.
///
/// Notation: b is `nr_bitlines`, N the length of `span`.  A group is touched by one thread at a
/// time.  Copies share the samples of their frames until one side writes.
class Group {
public:
    /// The loudness item that a record may carry: what it measures and its packed code.
    using Loudness = std::pair<api::loudness::Parameter, std::uint32_t>;

    /// Bits that the sections of the record need; see `zvk::serialize` for the sections.
    struct Budget {
        std::uint32_t sync_bits = 32;
        std::uint32_t header_bits = 128;
        std::uint32_t seed_bits = 0;
        /// Upper bound, fixed before the instructions are known to the bit.
        std::uint32_t instruction_bits = 0;
        std::uint32_t centers_bits = 0;
        std::uint32_t ixs_bits = 0;

        [[nodiscard]] std::uint32_t total() const {
            return sync_bits + header_bits + seed_bits + instruction_bits + centers_bits + ixs_bits;
        }
    };

    /// How the search for the number of centers went; nothing but reports reads it.
    struct Trace {
        std::uint32_t start = 0;     ///< first number of centers tried
        std::uint32_t learns = 0;    ///< calls of `learn`
        std::uint32_t fit = 0;       ///< last fit
        std::uint32_t need = 0;      ///< bits needed at the last fit
        std::uint32_t capacity = 0;  ///< bits there are
        std::uint32_t retries = 0;   ///< attempts repeated because the mix overflowed
    };

    static std::shared_ptr<Group> create(const api::SpeakerLayout& in,
                                         const api::SpeakerLayout& out,
                                         const api::SampleSpan& span);

    /// N.
    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(span.size()); }

    api::SpeakerLayout input_layout;
    api::SpeakerLayout output_layout;
    api::SampleSpan span;

    std::uint32_t nr_bitlines = 0;
    std::uint32_t prev_bitlines = 10;  ///< what this carrier channel chose in the frame before
    bool dither = true;
    std::uint32_t centers_max = 1;
    std::uint32_t centers_start_2 = 1;  ///< first number of centers to try with two channels
    std::uint32_t centers_start_3 = 1;  ///< the same with three
    std::uint32_t centers_min = 1;

    zvk::ZVK record;
    Budget budget;

    std::vector<Frame> origs;  ///< input channels of the group, after their own attenuation
    std::map<api::ChannelVariant, std::uint32_t> orig_attn;  ///< their attenuation indices

    // What the record shall tell besides the mix; empty where not due.
    std::optional<std::uint32_t> meta;
    std::optional<std::uint8_t> preset;
    std::optional<Loudness> loudness;
    std::optional<std::uint32_t> room_type;
    std::optional<Version> version;
    std::optional<std::uint32_t> git_hash;

    std::vector<Frame> active;    ///< channels that are really mixed
    Frame silence;                ///< stands in when all are silent; its length is not 0 just then
    std::uint32_t scaler_ix = 0;  ///< common attenuation of the mix
    std::vector<Frame> rescaled;  ///< `active` as (24 - b)-bit samples

    /// N for two channels, 2N for three (two per sample), none for one.
    std::vector<int> deltas;
    std::vector<std::uint64_t> ixs;  ///< index of a center, per sample
    std::vector<std::array<int, 1>> centers_1d;
    std::vector<std::array<int, 2>> centers_2d;
    bool fits = false;

    /// Error per `origs`, in dB.
    std::vector<double> dbrms;
    std::vector<double> dbpeak;
    std::vector<double> crest;
    double score = 0;  ///< lower is better
    bool has_score = false;

    std::vector<int> mix_seeds;  ///< 2 for two channels, 5 for three
    std::vector<int> mixed;      ///< N samples of 24 - b bits
    bool overflow = false;       ///< the mix does not fit into 24 - b bits

    Frame frame;  ///< the finished carrier frame

    Trace trace;
};

}  // namespace vela::codec::v3::encode
