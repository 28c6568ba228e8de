#include <algorithm>
#include <bit>
#include <check/Track.hpp>
#include <check/damage.hpp>
#include <check/traces.hpp>
#include <cmath>
#include <iomanip>
#include <sstream>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/decode_carrier.hpp>
#include <vela/carrier/marks.hpp>

namespace check {

namespace {

using Samples = std::span<const int>;

// Enough headers to tell their traces from chance.
constexpr std::size_t nr_blocks_looked_at = 32;

bool starts_block(Samples samples, std::size_t at, std::size_t frame_size) {
    const Samples rest = samples.subspan(at);
    if (rest.size() < frame_size || !vela::carrier::has_sync_word(rest)) return false;
    vela::carrier::Block block;
    std::string why;
    return vela::carrier::decode_block(block, why, rest.first(frame_size));
}

/// Index of the first sample at which a block starts; `samples.size()` if there is none.
std::size_t find_block(Samples samples, std::size_t frame_size) {
    for (std::size_t at = 0; at + frame_size <= samples.size(); ++at)
        if (starts_block(samples, at, frame_size)) return at;
    return samples.size();
}

std::string explain_frame_size(Samples samples, std::size_t frame_size) {
    std::size_t found = 0;
    std::string why;
    if (!vela::carrier::find_frame_size(found, why, samples) || found == frame_size) return "";
    return "a block of " + std::to_string(found) + " samples starts there: --frame-size " +
           std::to_string(found) + " may be right";
}

std::string explain_shift(const Suspect& suspect, std::size_t found) {
    const std::size_t late = found % suspect.frame_size;
    if (late == 0) return "";  // blocks go on where they should: the damage is local
    const std::string missing = std::to_string(suspect.frame_size - late);
    if (suspect.block == 0)
        return "it was cut or moved: blocks start at sample " + std::to_string(found) +
               ", as if the first " + missing + " samples of one were missing";
    return "it was cut in the middle: blocks go on at sample " +
           std::to_string(suspect.block * suspect.frame_size + found) + ", as if " + missing +
           " samples were missing or " + std::to_string(late) + " put in";
}

std::string explain_width(Samples samples) {
    unsigned used = 0;
    for (const int x : samples)
        used |= static_cast<unsigned>(x);
    if (used == 0) return "all samples are zero: it was silenced";
    const int nr_empty = std::countr_zero(used);
    if (nr_empty == 0) return "";
    return "it was converted to " + std::to_string(24 - nr_empty) +
           " bits, which takes the record away";
}

std::string explain_gain(Samples samples, std::size_t frame_size) {
    const auto gain = find_gain(samples, frame_size);
    if (!gain) return "";
    if (*gain == 1.0) return "its lowest bits were changed in every block: it was dithered again";
    std::ostringstream text;
    text << "it was changed in level, by " << std::showpos << std::fixed << std::setprecision(2)
         << 20 * std::log10(*gain) << " dB";
    return text.str();
}

/// Twice the samples at half the level would be sound; so a whole power of 2 up empties low lines
/// too, and must not pass for a conversion.
std::string explain_change(Samples samples, std::size_t frame_size) {
    auto width = explain_width(samples);
    const bool louder = !width.empty() && find_gain(samples, frame_size).value_or(1.0) > 1.0;
    if (!width.empty() && !louder) return width;
    if (auto gain = explain_gain(samples, frame_size); !gain.empty()) return gain;
    return "no block follows, nor any trace of one: it was resampled, filtered, changed in level, "
           "or is no carrier of blocks of " +
           std::to_string(frame_size) + " samples";
}

}  // namespace

std::string explain_damage(const Suspect& suspect) {
    const std::size_t frame_size = suspect.frame_size;
    Track track;
    std::string why;
    if (!track.open(why, suspect.file, nr_blocks_looked_at * frame_size,
                    suspect.block * frame_size) ||
        !track.next(why))
        return why;
    const Samples samples = track.samples(suspect.channel);

    if (track.bits_per_sample() == 16)
        return "it was converted to 16 bits, which takes the record away";
    if (auto size = explain_frame_size(samples, frame_size); !size.empty()) return size;
    const std::size_t found = find_block(samples, frame_size);
    if (found < samples.size()) return explain_shift(suspect, found);
    if (samples.size() < 2 * frame_size) return "";  // one block cannot show a habit
    return explain_change(samples, frame_size);
}

}  // namespace check
