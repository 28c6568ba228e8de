#include <algorithm>
#include <bit>
#include <vela/carrier/details/RecordReader.hpp>
#include <vela/carrier/details/refuse.hpp>

namespace vela::carrier::details {

namespace {

constexpr std::uint32_t widest_center = 32;
constexpr std::uint32_t largest_rice_k = 7;
constexpr std::uint32_t no_channel = 255;
constexpr std::size_t most_channels = 3;

/// Places for centers in a size class: 8, 10, .. 16, 20, .. 60, 64, 72, .. 600, 632, 648, ..
std::uint32_t nr_slots_of_class(std::uint32_t ix) {
    if (ix <= 4) return 2 * ix + 8;
    if (ix <= 15) return 4 * ix;
    if (ix <= 83) return 8 * ix - 64;
    return 16 * ix - 712;
}

/// Bits of the largest magnitude, at least 1, and the sign.
std::uint32_t width_of(const std::vector<std::array<int, 2>>& centers) {
    std::uint32_t largest = 1;
    for (const auto& center : centers) {
        for (const int x : center) {
            largest = std::max(largest, static_cast<std::uint32_t>(x < 0 ? -x : x));
        }
    }
    return static_cast<std::uint32_t>(std::bit_width(largest)) + 1;
}

}  // namespace

bool RecordReader::read(std::size_t nr_samples) {
    if (!read_header_() || !read_seeds_() || !read_instructions_()) return false;
    if (nr_channels_() > 1) {
        if (!read_centers_() || !read_ixs_(nr_samples) || !check_centers_()) return false;
    }
    return read_padding_();
}

bool RecordReader::read_header_() {
    if (!read_fields_() || !read_channels_()) return false;
    std::uint32_t reserved = 0;
    if (!bits_.take(reserved, 32)) return refuse(why_, "the record ends within its header");
    if (reserved != 0) return refuse(why_, "the reserved end of the header is not zero");
    return nr_channels_() == 1 ? check_without_mix_() : check_for_mix_();
}

bool RecordReader::read_fields_() {
    Header& header = block_.header;
    std::uint32_t reserved_flags = 0, encoded = 0, native = 0, mix_bw_code = 0, dither = 0,
                  ix_coding = 0;
    const bool complete =
        bits_.take(header.frame_size_code, 8) && bits_.take(reserved_flags, 2) &&
        bits_.take(encoded, 1) && bits_.take(native, 1) && bits_.take(mix_bw_code, 4) &&
        bits_.take(header.version_major, 8) && bits_.take(header.version_minor, 8) &&
        bits_.take(dither, 1) && bits_.take(ix_coding, 3) && bits_.take(header.rice_k, 4) &&
        bits_.take(header.error_center_ix, 8) && bits_.take(header.nr_instruction_lists, 8) &&
        bits_.take(header.center_bits, 8);
    if (!complete) return refuse(why_, "the record ends within its header");

    header.native_content = native != 0;
    header.dither = dither != 0;
    if (reserved_flags != 0) return refuse(why_, "a reserved flag of the header is set");
    if (encoded == 0) return refuse(why_, "the header says that the block is not encoded");
    if (header.version_major != 1 || header.version_minor != 10) {
        return refuse(why_, "the record has version ", header.version_major, ".",
                      header.version_minor, ", not 1.10");
    }
    if (ix_coding != 0) return refuse(why_, "the way of coding the indices is unknown");
    if (header.nr_instruction_lists > 1) {
        return refuse(why_, "there are ", header.nr_instruction_lists, " instruction lists");
    }
    return true;
}

bool RecordReader::read_channels_() {
    auto& channels = block_.header.channels;
    channels.clear();
    bool ended = false;
    for (std::size_t slot = 0; slot <= most_channels; ++slot) {
        std::uint32_t id = 0;
        if (!bits_.take(id, 8)) return refuse(why_, "the record ends within its header");
        if (id == no_channel) {
            ended = true;
            continue;
        }
        const auto channel = static_cast<api::channel::id::Value>(id);
        if (id >= api::channel::id::count) return refuse(why_, "there is no channel ", id);
        if (ended) return refuse(why_, "channel ", id, " stands behind an empty slot");
        if (std::ranges::find(channels, channel) != channels.end()) {
            return refuse(why_, "channel ", id, " is mixed twice");
        }
        channels.push_back(channel);
    }
    if (channels.empty()) return refuse(why_, "no channel is named");
    if (channels.size() > most_channels) return refuse(why_, "four channels are named");
    return true;
}

bool RecordReader::check_for_mix_() const {
    const Header& header = block_.header;
    if (header.rice_k < 1 || header.rice_k > largest_rice_k) {
        return refuse(why_, "the Rice parameter ", header.rice_k, " lies outside 1 to 7");
    }
    if (header.center_bits < 2 || header.center_bits > widest_center) {
        return refuse(why_, "centers of ", header.center_bits, " bits cannot be");
    }
    return true;
}

bool RecordReader::check_without_mix_() const {
    const Header& header = block_.header;
    if (header.rice_k == 0 && header.center_bits == 0 && header.error_center_ix == 0) return true;
    return refuse(why_, "a single channel has neither indices nor centers to describe");
}

bool RecordReader::read_seeds_() {
    block_.seeds.clear();
    if (nr_channels_() == 1) return true;
    block_.seeds.resize(nr_channels_() == 2 ? 2 : 5);
    for (int& seed : block_.seeds) {
        std::uint32_t bits = 0;
        if (!bits_.take(bits, 32)) return refuse(why_, "the record ends within the seeds");
        seed = static_cast<int>(bits);
    }
    // Two seeds stand in reverse order, five do not.
    if (nr_channels_() == 2) std::swap(block_.seeds[0], block_.seeds[1]);
    return true;
}

bool RecordReader::read_instructions_() {
    block_.instructions.clear();
    if (block_.header.nr_instruction_lists == 0) return true;
    return read_instructions(block_.instructions, why_, bits_);
}

bool RecordReader::read_centers_() {
    block_.nr_center_slots = nr_slots_of_class(block_.header.error_center_ix);
    block_.centers.assign(block_.nr_center_slots, {0, 0});
    reads_unused_.clear();
    for (std::size_t element = 0; element + 1 < nr_channels_(); ++element) {
        if (!read_slots_(element)) return false;
    }
    return true;
}

bool RecordReader::read_slots_(std::size_t element) {
    std::vector<bool>& unused = reads_unused_.emplace_back(block_.nr_center_slots);
    for (std::size_t slot = 0; slot < block_.nr_center_slots; ++slot) {
        bool ones = false;
        if (!read_center_(block_.centers[slot][element], ones)) return false;
        unused[slot] = ones;
    }
    return true;
}

bool RecordReader::read_center_(int& out, bool& unused) {
    const unsigned magnitude_bits = block_.header.center_bits - 1;
    std::uint32_t negative = 0, magnitude = 0;
    if (!bits_.take(negative, 1) || !bits_.take(magnitude, magnitude_bits)) {
        return refuse(why_, "the record ends within the centers");
    }
    if (negative != 0 && magnitude == 0) return refuse(why_, "a center of zero has a sign");
    unused = negative != 0 && std::popcount(magnitude) == static_cast<int>(magnitude_bits);
    out = negative != 0 ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
    return true;
}

bool RecordReader::read_ixs_(std::size_t nr_samples) {
    block_.ixs.assign(nr_samples, 0);
    for (std::size_t t = 0; t < nr_samples; ++t) {
        std::uint32_t& ix = block_.ixs[t];
        if (!read_ix_(ix)) return refuse(why_, "the record ends within the index of sample ", t);
        if (ix >= block_.nr_center_slots) {
            return refuse(why_, "the index ", ix, " of sample ", t, " is beyond the ",
                          block_.nr_center_slots, " places for centers");
        }
    }
    return true;
}

bool RecordReader::read_ix_(std::uint32_t& out) {
    std::uint32_t quotient = 0, bit = 0;
    for (;;) {
        if (!bits_.take(bit, 1)) return false;
        if (bit == 0) break;
        ++quotient;
    }
    const unsigned k = block_.header.rice_k;
    out = quotient << k;
    for (unsigned place = 0; place < k; ++place) {  // alone in the record: low bit first
        if (!bits_.take(bit, 1)) return false;
        out |= bit << place;
    }
    return true;
}

// Every center is the center of some sample, so that those beyond the highest index are unused.
bool RecordReader::check_centers_() {
    const std::size_t nr_used = std::ranges::max(block_.ixs) + std::size_t{1};
    for (const std::vector<bool>& unused : reads_unused_) {
        if (std::find(unused.begin() + static_cast<std::ptrdiff_t>(nr_used), unused.end(), false) !=
            unused.end()) {
            return refuse(why_, "a place for a center behind the ", nr_used,
                          " used ones is filled");
        }
    }
    block_.centers.resize(nr_used);

    const std::uint32_t size_class = block_.header.error_center_ix;
    if (size_class > 0 && nr_used <= nr_slots_of_class(size_class - 1)) {
        return refuse(why_, "size class ", size_class, " is too large for ", nr_used, " centers");
    }
    const std::uint32_t needed = width_of(block_.centers);
    if (needed == block_.header.center_bits) return true;
    return refuse(why_, "centers of ", needed, " bits are written in ", block_.header.center_bits);
}

bool RecordReader::read_padding_() {
    block_.nr_spare_bits = bits_.left();
    std::uint32_t bit = 0;
    while (bits_.take(bit, 1)) {
        if (bit != 0) {
            return refuse(why_, "the padding is not zero ", bits_.left() + 1,
                          " bits before the end of the record");
        }
    }
    return true;
}

}  // namespace vela::carrier::details
