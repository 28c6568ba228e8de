#include <algorithm>
#include <check/Track.hpp>
#include <check/damage.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/marks.hpp>

namespace check {

namespace {

using Samples = std::span<const int>;

// As many samples as the largest block needs to be found in, wherever it starts.
constexpr std::size_t nr_blocks_looked_at = 8;

bool starts_block(Samples samples, std::size_t at, std::size_t frame_size) {
    const Samples rest = samples.subspan(at);
    if (rest.size() < frame_size || !vela::carrier::has_sync_word(rest)) return false;
    vela::carrier::Block block;
    std::string why;
    return vela::carrier::decode_block(block, why, rest.first(frame_size));
}

std::size_t find_block(Samples samples, std::size_t frame_size) {
    std::size_t at = 0;
    while (at + frame_size <= samples.size() && !starts_block(samples, at, frame_size))
        ++at;
    return at;
}

bool is_16_bits(Samples samples) {
    return std::ranges::all_of(samples, [](int x) { return (x & 0xFF) == 0; }) &&
           std::ranges::any_of(samples, [](int x) { return x != 0; });
}

}  // namespace

std::string explain_damage(const vela::file::Name& name, std::size_t channel,
                           std::size_t frame_size) {
    Track track;
    std::string why;
    if (!track.open(why, name, nr_blocks_looked_at * frame_size) || !track.next(why)) return why;
    const Samples samples = track.samples(channel);

    if (track.bits_per_sample() == 16 || is_16_bits(samples))
        return "it was converted to 16 bits, which takes the record away";
    const std::size_t at = find_block(samples, frame_size);
    if (at == 0) return "";  // sound at its start: the damage is local
    if (at + frame_size <= samples.size()) {
        // What was cut may have been any count of whole blocks more.
        const std::size_t off = (frame_size - at % frame_size) % frame_size;
        if (off == 0) return "its first " + std::to_string(at / frame_size) + " blocks are damaged";
        return "it was cut or moved: blocks start at sample " + std::to_string(at) +
               ", as if the first " + std::to_string(off) + " samples of one were missing";
    }
    return "no block is left anywhere near its start: it was resampled, changed in level, dithered "
           "again or written with another frame size";
}

}  // namespace check
