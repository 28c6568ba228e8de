#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vela/bnb/details/serialize.hpp>
#include <vela/wav/Format.hpp>

/// WAV files put together by hand, faults included.
namespace vela::testing_support {

inline std::string u16(std::uint64_t value) {
    std::string out;
    bnb::details::serialize(out, value, bnb::UInt16_tag(), bnb::LittleEndian_tag());
    return out;
}

inline std::string u24(std::int64_t value) {
    std::string out;
    bnb::details::serialize(out, value, bnb::UInt24_tag(), bnb::LittleEndian_tag());
    return out;
}

inline std::string u32(std::uint64_t value) {
    std::string out;
    bnb::details::serialize(out, value, bnb::UInt32_tag(), bnb::LittleEndian_tag());
    return out;
}

inline std::string chunk(const std::string& id, const std::string& content) {
    return id + u32(content.size()) + content + std::string(content.size() % 2, '\0');
}

inline std::string riff_file(const std::string& chunks, const std::string& type = "WAVE") {
    return "RIFF" + u32(4 + chunks.size()) + type + chunks;
}

inline wav::Format pcm_format(std::uint16_t channels, std::uint16_t bits) {
    wav::Format format;
    format.format_tag = wav::Format::pcm;
    format.channels = channels;
    format.sample_rate = 48000;
    format.bits_per_sample = bits;
    format.block_align = static_cast<std::uint16_t>(channels * bits / 8);
    format.byte_rate = format.sample_rate * format.block_align;
    return format;
}

inline wav::Format extensible_format(std::uint16_t channels, std::uint16_t bits) {
    wav::Format format = pcm_format(channels, bits);
    format.format_tag = wav::Format::extensible;
    format.extension_size = 22;
    format.valid_bits_per_sample = bits;
    format.channel_mask = 3;
    format.subformat = wav::KSDATAFORMAT_SUBTYPE_PCM();
    return format;
}

inline std::string fmt_content(const wav::Format& format) {
    std::string out = u16(format.format_tag) + u16(format.channels) + u32(format.sample_rate) +
                      u32(format.byte_rate) + u16(format.block_align) + u16(format.bits_per_sample);
    if (format.format_tag != wav::Format::extensible) return out;
    out +=
        u16(format.extension_size) + u16(format.valid_bits_per_sample) + u32(format.channel_mask);
    format.subformat.serialize(out);
    return out;
}

inline std::string wav_file(const wav::Format& format, const std::string& data) {
    return riff_file(chunk("fmt ", fmt_content(format)) + chunk("data", data));
}

}  // namespace vela::testing_support
