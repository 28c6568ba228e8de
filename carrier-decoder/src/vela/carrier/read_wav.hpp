#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <vela/api/SpeakerLayout.hpp>
#include <vela/carrier/Block.hpp>
#include <vela/file/Name.hpp>

namespace vela::carrier {

/// A WAV file as a whole.
struct WavFile {
    std::uint32_t sample_rate = 0;
    /// By channel of the file, all of one length, 24-bit values.
    std::vector<std::vector<int>> channels;
};

/// False, with the reason in `why`, if the file cannot be read or does not hold 24-bit PCM.
[[nodiscard]] bool read_wav(WavFile& out, std::string& why, const file::Name& name);

/// The channels of a carrier layout in the order of an interleaved file: by their bit in the WAVE
/// channel mask, where the back pair comes before the side pair.  What no carrier holds is left
/// out.
[[nodiscard]] std::vector<ChannelId> interleaving_of(const api::SpeakerLayout& carrier);

}  // namespace vela::carrier
