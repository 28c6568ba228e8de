#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>
#include <vela/file/Name.hpp>
#include <vela/wav/FileParser.hpp>

namespace check {

/// A WAV file, read block by block; nothing but the current block is held.
class Track {
public:
    /// Blocks count from `first_sample`.  False, with one sentence in `why`, if this is no WAV file
    /// of 16 or 24 bits that is complete.  (Carriers have 24; 16 are read to tell what happened.)
    [[nodiscard]] bool open(std::string& why, const vela::file::Name& name, std::size_t block_size,
                            std::uint64_t first_sample = 0);

    /// Takes the next block, short or empty at the end of the file.  False if it cannot be read.
    [[nodiscard]] bool next(std::string& why);

    /// One channel of the current block.
    [[nodiscard]] std::span<const int> samples(std::size_t channel) const {
        return block_.channels[channel];
    }

    [[nodiscard]] const vela::file::Name& name() const { return name_; }
    /// Sample frames from the first one wanted to the end of the file.
    [[nodiscard]] std::uint64_t size() const { return parser_.nr_frames; }
    [[nodiscard]] std::size_t nr_channels() const { return parser_.format->channels; }
    [[nodiscard]] std::uint32_t sample_rate() const { return parser_.format->sample_rate; }
    [[nodiscard]] unsigned bits_per_sample() const { return parser_.format->bits_per_sample; }

private:
    [[nodiscard]] bool check_format_(std::string& why) const;

    vela::file::Name name_;
    vela::wav::Parser<int, vela::file::Range> parser_;
    vela::wav::details::BlockInfo<int> block_;
};

}  // namespace check
