#pragma once

#include <check/Track.hpp>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>
#include <vela/carrier/Block.hpp>

namespace check {

/// The channels that went into the encoder, block by block.
class Originals {
public:
    /// False, with one sentence in `why`, if a file cannot be read, is not mono, has other than 24
    /// bits, or another sample rate than the others.
    [[nodiscard]] bool open(std::string& why,
                            const std::map<vela::carrier::ChannelId, vela::file::Name>& files,
                            std::size_t block_size);

    /// Takes the next block of all channels.
    [[nodiscard]] bool next(std::string& why);

    /// The current block; what is missing at the end of a file counts as zeros.
    [[nodiscard]] const vela::carrier::Channels& block() const { return block_; }

    [[nodiscard]] bool empty() const { return tracks_.empty(); }
    /// Of the first of them; nothing if there are none.
    [[nodiscard]] std::optional<std::uint32_t> sample_rate() const;
    /// Blocks that the encoder makes of them: it stops with the shortest file, fills the last block
    /// with zeros, and makes one even of nothing.
    [[nodiscard]] std::uint64_t nr_blocks() const;

private:
    std::size_t block_size_ = 0;
    std::map<vela::carrier::ChannelId, Track> tracks_;
    vela::carrier::Channels block_;
};

}  // namespace check
