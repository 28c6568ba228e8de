#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <vela/wav/Parser.hpp>

#include "Bytes.hpp"

namespace vela::fuzz {

namespace wav_reader_details {

using Parser = wav::Parser<int, file::Range>;
using Block = wav::details::BlockInfo<int>;

/// A file that never touches a disk.
class MemoryFile {
public:
    MemoryFile() : handle_(memfd_create("fuzz", 0)) {}
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(handle_); }

    [[nodiscard]] bool set(std::string_view content) const {
        return ftruncate(handle_, static_cast<off_t>(content.size())) == 0 &&
               pwrite(handle_, content.data(), content.size(), 0) ==
                   static_cast<ssize_t>(content.size());
    }
    [[nodiscard]] file::Name name() const {
        return file::Name("/proc/self/fd/" + std::to_string(handle_));
    }

private:
    int handle_;
};

inline bool fits(int sample, unsigned bits) {
    return bits == 32 || (sample >= -(1 << (bits - 1)) && sample < 1 << (bits - 1));
}

inline bool block_is_sound(const Block& block, const Parser& parser) {
    const auto frames = block.stop - block.start;
    return block.channels.size() == parser.format->channels && frames <= parser.block_size &&
           std::ranges::all_of(block.channels, [&](const auto& channel) {
               return channel.size() == frames && std::ranges::all_of(channel, [&](int sample) {
                          return fits(sample, parser.format->bits_per_sample);
                      });
           });
}

/// Whether a block of one channel, read past the cache, is the same, and filled up with zeros.
inline bool is_read_alike(wav::details::BlockIterator<int, file::Range>& at) {
    if (!at.is_mono()) return at.cache->channels.size() != 1;
    auto samples = at.cache->channels.front();
    samples.resize(samples.size() + 3);
    std::vector<int> again(samples.size(), -1);
    return at.read_mono(again) && again == samples;
}

/// Reads every block.  Those that can be read make up all frames, each once but for the overlap.
inline bool blocks_are_sound(const Parser& parser) {
    std::uint64_t nr_read = 0, nr_failed = 0;
    for (auto at = parser.blocks.begin(); at != parser.blocks.end(); ++at) {
        if (!at.parse_block_()) {
            ++nr_failed;
            continue;
        }
        if (at.parse_block_() || !block_is_sound(*at.cache, parser)) return false;
        if (!is_read_alike(at)) return false;
        nr_read += at.cache->stop - at.cache->start;
    }
    const bool all_read = nr_failed == 0 && parser.overlap == 0;
    return !all_read || nr_read == parser.nr_frames;
}

}  // namespace wav_reader_details

/// Reads any bytes as a WAV file, whole.  The last three bytes are no part of the file but set
/// block size, overlap and offset.  False if what is read does not go together.
inline bool wav_reader(std::string_view input) {
    using namespace wav_reader_details;
    static const MemoryFile memory;
    const auto content = input.substr(0, input.size() - std::min<std::size_t>(input.size(), 3));
    Bytes bytes(input.substr(content.size()));
    Parser parser;
    parser.block_size = bytes.byte();
    parser.overlap = bytes.byte();
    parser.offset = bytes.byte();
    if (!memory.set(content)) return false;
    if (!parser.parse(memory.name())) return true;
    if (!parser.format->is_pcm() || parser.format->block_align == 0) return false;
    if (parser.nr_frames > content.size() / parser.format->block_align) return false;
    return blocks_are_sound(parser);
}

}  // namespace vela::fuzz
