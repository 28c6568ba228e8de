#include <vela/wav/Format.hpp>

namespace vela::wav {
namespace {

bool pop(file::Range& range, std::uint16_t& out) {
    return range.pop_raw<bnb::UInt16_tag, bnb::LittleEndian_tag>(out);
}

bool pop(file::Range& range, std::uint32_t& out) {
    return range.pop_raw<bnb::UInt32_tag, bnb::LittleEndian_tag>(out);
}

}  // namespace

bool Format::parse(file::Range& range) {
    *this = Format();
    if (!parse_base_(range)) return false;
    return format_tag != extensible || parse_extension_(range);
}

bool Format::is_pcm() const {
    if (format_tag == pcm) return true;
    return format_tag == extensible && subformat == KSDATAFORMAT_SUBTYPE_PCM() &&
           valid_bits_per_sample == bits_per_sample;
}

bool Format::parse_base_(file::Range& range) {
    return pop(range, format_tag) && pop(range, channels) && pop(range, sample_rate) &&
           pop(range, byte_rate) && pop(range, block_align) && pop(range, bits_per_sample);
}

bool Format::parse_extension_(file::Range& range) {
    if (!pop(range, extension_size) || range.size() != extension_size) return false;
    if (!pop(range, valid_bits_per_sample) || !pop(range, channel_mask)) return false;
    return subformat.parse(range) && subformat == KSDATAFORMAT_SUBTYPE_PCM();
}

}  // namespace vela::wav
