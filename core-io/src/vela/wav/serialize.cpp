#include <vela/wav/serialize.hpp>

namespace vela::wav {
namespace {

using bnb::UInt16_tag;
using bnb::UInt32_tag;

void serialize_extension(riff::Chunk<file::String>& fmt, const Format& format) {
    fmt.add<UInt16_tag>(format.extension_size);
    if (format.extension_size == 0) return;
    fmt.add<UInt16_tag>(format.valid_bits_per_sample);
    fmt.add<UInt32_tag>(format.channel_mask);
    format.subformat.serialize(fmt);
}

}  // namespace

void serialize(riff::Chunk<file::String>& chunk, const Format& format) {
    riff::Chunk<file::String> fmt(chunk, "fmt ");
    fmt.add<UInt16_tag>(format.format_tag);
    fmt.add<UInt16_tag>(format.channels);
    fmt.add<UInt32_tag>(format.sample_rate);
    fmt.add<UInt32_tag>(format.byte_rate);
    fmt.add<UInt16_tag>(format.block_align);
    fmt.add<UInt16_tag>(format.bits_per_sample);
    if (format.format_tag == Format::extensible) serialize_extension(fmt, format);
    fmt.commit();
}

}  // namespace vela::wav
