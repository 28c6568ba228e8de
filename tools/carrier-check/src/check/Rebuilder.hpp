#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vela/carrier/Block.hpp>
#include <vela/wav/FileWriter.hpp>

namespace check {

/// Writes what a decoder gives: one 24-bit mono WAV per rebuilt channel.
class Rebuilder {
public:
    Rebuilder(std::string prefix, std::uint32_t sample_rate, std::size_t block_size)
        : prefix_(std::move(prefix)), sample_rate_(sample_rate), block_size_(block_size) {}

    /// Makes the file of a channel, once.
    void add_channel(vela::carrier::ChannelId id);

    /// Takes the channels of one carrier's block; of a channel that stands in several carriers the
    /// first counts.
    void take(const vela::carrier::Block& block);

    /// Writes one block of every channel; what no carrier gave is silent.  False if a file cannot
    /// take it.
    [[nodiscard]] bool end_block();

private:
    std::string prefix_;
    std::uint32_t sample_rate_;
    std::size_t block_size_;
    std::map<vela::carrier::ChannelId, std::unique_ptr<vela::wav::FileWriter>> writers_;
    vela::carrier::Channels block_;
};

}  // namespace check
