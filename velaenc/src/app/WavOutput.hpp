#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vela/api/AudioBlock.hpp>
#include <vela/api/SpeakerLayout.hpp>
#include <vela/audio/Frame.hpp>
#include <vela/file/Name.hpp>
#include <vela/wav/FileWriter.hpp>

namespace app {

/// Writes the carrier to 24-bit WAV: one mono file per channel, or one interleaved file.
///
/// Channels go in the order of the WAVE channel mask, not of their ids.  The interleaved file
/// carries no mask, so that its reader must know the order.  Set the fields, `prepare` once, then
/// append.  The sizes in the files are right once the object is gone.
class WavOutput {
public:
    vela::file::Name filename;  ///< prefix, joined to the channel's short name as it stands
    vela::api::SpeakerLayout layout;
    std::optional<std::uint32_t> sample_rate;
    bool multi_channel = false;

    /// Opens the files, once.  False if a field is missing or a channel has no place in WAVE.
    [[nodiscard]] bool prepare();

    /// Main signals (variant 0) of all channels of the layout.  False if one is missing or a sample
    /// does not fit into 24 bits.
    [[nodiscard]] bool append(const vela::audio::Frames& frames);
    [[nodiscard]] bool append(const vela::api::AudioBlock<const int>& block);

private:
    /// The bit of a speaker position in the WAVE channel mask.
    using WavChannel = std::uint32_t;
    struct OutputChannel {
        vela::api::Channel channel;
        std::shared_ptr<vela::wav::FileWriter> writer;  ///< empty with one file for all
    };

    bool prepare_();
    bool prepare_files_();
    bool prepare_interleaved_();
    [[nodiscard]] vela::wav::Format format_(std::uint32_t nr_channels) const;
    bool append_files_(const vela::api::AudioBlock<const int>& block);
    bool append_interleaved_(const vela::api::AudioBlock<const int>& block);

    std::map<WavChannel, OutputChannel> channels_;
    std::shared_ptr<vela::wav::FileWriter> multi_writer_;
};

}  // namespace app
