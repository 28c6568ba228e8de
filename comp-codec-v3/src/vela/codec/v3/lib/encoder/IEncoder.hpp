#pragma once

#include <string>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/RoomType.hpp>
#include <vela/api/SpeakerLayout.hpp>
#include <vela/api/loudness/Value.hpp>
#include <vela/audio/Frame.hpp>
#include <vela/codec/v3/lib/encoder/QualityMetric.hpp>

namespace vela::codec::v3::encoder {

/// Turns blocks of a full layout into blocks of its carrier, one by one.
///
/// Options first, "bitline.min", "bitline.max" and "sample_rate" among them; then, per frame, the
/// metadata that holds for it and `encode_one`, or the two calls that make it up.  All calls come
/// from one thread.
class IEncoder {
public:
    using Frames = audio::Frames;

    virtual ~IEncoder() = default;

    [[nodiscard]] virtual const api::SpeakerLayout& input_layout() const = 0;
    [[nodiscard]] virtual const api::SpeakerLayout& output_layout() const = 0;

    /// False for an unknown key or a value out of range.
    [[nodiscard]] virtual bool set_option(const std::string& key, int value) = 0;
    [[nodiscard]] virtual bool set_option(const std::string& key, const std::string& value) = 0;

    /// Attenuates an input channel by a linear gain from 1 to 16; false for any other.
    [[nodiscard]] virtual bool set_attn(const api::ChannelVariant& channel, float gain) = 0;

    /// Linear gain that a decoder shall apply to a carrier channel; channels that the carrier does
    /// not hold are ignored.  Calls within one frame add up bit by bit.
    [[nodiscard]] virtual bool set_meta(const api::Channel& channel, float gain) = 0;

    /// Preset 0 to 255, or -1 when there is none.
    [[nodiscard]] virtual bool set_orbimix_preset(int preset) = 0;

    /// False for a dimension above 3; a parameter that is not sent is ignored.
    [[nodiscard]] virtual bool update_loudness(const api::loudness::Value& value) = 0;

    [[nodiscard]] virtual bool set_room_type(const api::RoomType& room_type) = 0;

    /// One 24-bit block of all input channels in, the same block of all carrier channels out.
    /// REQUIRES that no block is under way.
    [[nodiscard]] virtual bool encode_one(Frames& out, const Frames& in) = 0;

    /// Error figure of the run so far; false for a channel that was in no group.
    [[nodiscard]] virtual bool get_quality_metric(double& result,
                                                  const api::ChannelVariant& channel,
                                                  QualityMetric metric) const = 0;

    /// `encode_one` in two calls: a block may begin while others are under way, so that no thread
    /// waits for the last one at work on a block.  Blocks end in the order of their begin. Metadata
    /// hold for the next one to begin; options stay as they are while one is under way.
    ///
    /// False, too, if there is no room for one more, or none to end.  A block that cannot begin
    /// leaves those under way as they are; one that fails at its end is gone, and the next can end.
    [[nodiscard]] virtual bool begin_one(const Frames& in) = 0;
    [[nodiscard]] virtual bool end_one(Frames& out) = 0;
    /// Blocks that there is room for; 1 if the calling thread does all the work.
    [[nodiscard]] virtual unsigned max_under_way() const = 0;
};

}  // namespace vela::codec::v3::encoder
