#pragma once

#include <string>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/RoomType.hpp>
#include <vela/api/SpeakerLayout.hpp>
#include <vela/api/loudness/Value.hpp>
#include <vela/audio/Frame.hpp>
#include <vela/codec/v3/lib/encoder/QualityMetric.hpp>
#include <vela/thread/Errands.hpp>

namespace vela::codec::v3::encoder {

/// Turns blocks of a full layout into blocks of its carrier, one call per block.
///
/// Options first, "bitline.min", "bitline.max" and "sample_rate" among them; then, per frame, the
/// metadata that holds for it and `encode_one`.  All calls come from one thread.
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
    [[nodiscard]] virtual bool encode_one(Frames& out, const Frames& in) = 0;

    /// Error figure of the run so far; false for a channel that was in no group.
    [[nodiscard]] virtual bool get_quality_metric(double& result,
                                                  const api::ChannelVariant& channel,
                                                  QualityMetric metric) const = 0;

    /// Work that the encoder's threads do while they wait for the next frame, and the calling one
    /// while it waits for them; null without threads.
    [[nodiscard]] virtual thread::Errands* errands() = 0;
};

}  // namespace vela::codec::v3::encoder
