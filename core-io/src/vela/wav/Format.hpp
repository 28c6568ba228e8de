#pragma once

#include <cstdint>
#include <vela/file/Range.hpp>
#include <vela/wav/GUID.hpp>

namespace vela::wav {

/// The "fmt " chunk of a WAV file.
struct Format {
    static constexpr std::uint16_t pcm = 1;
    static constexpr std::uint16_t extensible = 65534;

    std::uint16_t format_tag = 0;
    /// Interleaved channels.
    std::uint16_t channels = 0;
    /// In Hz.
    std::uint32_t sample_rate = 0;
    /// Bytes per second; stored, never relied upon.
    std::uint32_t byte_rate = 0;
    /// Bytes per sample frame, that is, of one sample of every channel.
    std::uint16_t block_align = 0;
    /// Width of one sample.
    std::uint16_t bits_per_sample = 0;

    // The rest is there only if `format_tag` is `extensible`.
    /// Bytes of the chunk that follow this field.
    std::uint16_t extension_size = 0;
    std::uint16_t valid_bits_per_sample = 0;
    std::uint32_t channel_mask = 0;
    GUID subformat;

    /// Reads the content of a "fmt " chunk.  False if it is too short, or extensible and of a wrong
    /// size or no PCM; fields read until then stay set, the others are 0.
    [[nodiscard]] bool parse(file::Range& range);

    /// Whether samples are plain integers that fill their width.
    [[nodiscard]] bool is_pcm() const;

    bool operator==(const Format&) const = default;

private:
    bool parse_base_(file::Range& range);
    bool parse_extension_(file::Range& range);
};

}  // namespace vela::wav
