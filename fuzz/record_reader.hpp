#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <vela/carrier/BitMap.hpp>
#include <vela/carrier/checksum.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/marks.hpp>
#include <vela/carrier/support/Sample.hpp>

#include "Bytes.hpp"

namespace vela::fuzz {

namespace record_reader_details {

using Samples = std::vector<int>;

/// A sound block, and how many bit-lines it has.
struct Sound {
    unsigned nr_bitlines;
    Samples samples;
};

inline const std::vector<Sound>& sound_blocks() {
    static const std::vector<Sound> blocks = [] {
        std::vector<Sound> made;
        for (const auto& [nr_channels, length, nr_bitlines] : {std::array{1u, 16u, 12u},
                                                               {1u, 64u, 4u},
                                                               {2u, 48u, 12u},
                                                               {2u, 160u, 5u},
                                                               {3u, 64u, 12u},
                                                               {3u, 192u, 5u}})
            made.push_back(
                {nr_bitlines,
                 carrier::support::make_sample(nr_channels, length, nr_bitlines).samples()});
        return made;
    }();
    return blocks;
}

/// Whatever the bytes say, three a sample.
inline Samples samples_of(Bytes bytes) {
    Samples samples;
    while (!bytes.empty())
        samples.push_back(static_cast<int>(bytes.number(3) << 8) >> 8);
    return samples;
}

/// Writes the right checksum, so that what is wrong elsewhere gets past it.
inline void seal(Samples& samples) {
    const unsigned crc = carrier::crc_of_block(samples);
    for (std::size_t t = 0; t < carrier::nr_marked_samples; ++t)
        samples[t] = (samples[t] & ~2) | static_cast<int>((crc >> (15 - t) & 1u) << 1);
}

/// A sound block with some bytes of its record replaced; each takes a place and a value.
inline Samples mutated(const Sound& sound, Bytes bytes) {
    Samples samples = sound.samples;
    const auto nr_bits = carrier::nr_record_bits(samples.size(), sound.nr_bitlines);
    while (!bytes.empty()) {
        const std::size_t first = bytes.number(2) % nr_bits;
        const unsigned value = bytes.byte();
        for (std::size_t i = 0; i < 8 && first + i < nr_bits; ++i) {
            const auto place = carrier::place_of(first + i, sound.nr_bitlines);
            const int mask = 1 << place.line;
            samples[place.sample] &= ~mask;
            if ((value >> (7 - i) & 1u) != 0) samples[place.sample] |= mask;
        }
    }
    seal(samples);
    return samples;
}

/// What holds for every block that is taken, whoever wrote it.
inline bool is_sound(const carrier::Block& block, std::size_t nr_samples) {
    const auto& channels = block.header.channels;
    if (channels.empty() || channels.size() > 3) return false;
    if (block.nr_samples() != nr_samples || block.channels.size() != channels.size()) return false;
    if (!std::ranges::all_of(block.channels,
                             [&](const auto& c) { return c.second.size() == nr_samples; }))
        return false;
    if (block.ixs.size() != (channels.size() == 1 ? 0 : nr_samples)) return false;
    if (!std::ranges::all_of(block.ixs, [&](auto ix) { return ix < block.centers.size(); }))
        return false;
    return block.unattenuated().size() == channels.size();
}

}  // namespace record_reader_details

/// Decodes a block.  The first byte says whether the rest is samples, or changes to the record of
/// a sound block, sealed again.  False if a refusal has no reason, or if a block is taken that is
/// not whole or decodes otherwise the second time.
inline bool record_reader(std::string_view input) {
    using namespace record_reader_details;
    Bytes bytes(input);
    const std::size_t kind = bytes.byte() % (sound_blocks().size() + 1);
    const Samples samples =
        kind == 0 ? samples_of(bytes) : mutated(sound_blocks()[kind - 1], bytes);
    carrier::Block block;
    std::string why;
    if (!carrier::decode_block(block, why, samples)) return !why.empty();
    carrier::Block again;
    return is_sound(block, samples.size()) && carrier::decode_block(again, why, samples) &&
           again == block;
}

}  // namespace vela::fuzz
