#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vela/carrier/Block.hpp>
#include <vela/file/Name.hpp>
#include <vela/wav/FileWriter.hpp>

namespace check {

/// Writes what a decoder gives: one 24-bit mono WAV per rebuilt channel.
///
/// A failure comes with one sentence in `why` that names the file.
class Rebuilder {
public:
    Rebuilder(std::string prefix, std::uint32_t sample_rate, std::size_t block_size)
        : prefix_(std::move(prefix)), sample_rate_(sample_rate), block_size_(block_size) {}

    /// Makes the file of a channel, once.  False if it cannot be made, or if it is one of `kept`:
    /// carriers and originals often bear the very names that rebuilt channels get.
    [[nodiscard]] bool add_channel(std::string& why, vela::carrier::ChannelId id,
                                   std::span<const vela::file::Name> kept);

    /// Takes the channels of one carrier's block; of a channel that stands in several carriers the
    /// first counts.
    void take(const vela::carrier::Block& block);

    /// Writes one block of every channel; what no carrier gave is silent.  False if a file cannot
    /// take it.
    [[nodiscard]] bool end_block(std::string& why);

    /// Closes the files.  False if any is shorter than what was written into it, as on a full disk.
    [[nodiscard]] bool finish(std::string& why);

private:
    struct Output {
        vela::file::Name name;
        std::unique_ptr<vela::wav::FileWriter> writer;
    };

    [[nodiscard]] vela::file::Name name_of_(vela::carrier::ChannelId id) const;

    std::string prefix_;
    std::uint32_t sample_rate_;
    std::size_t block_size_;
    std::uint64_t nr_blocks_ = 0;
    std::map<vela::carrier::ChannelId, Output> outputs_;
    vela::carrier::Channels block_;
};

}  // namespace check
