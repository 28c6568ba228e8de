#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vela/Cache.hpp>
#include <vela/bnb/details/bytes.hpp>
#include <vela/wav/Format.hpp>
#include <vela/wav/details/BlockInfo.hpp>

namespace vela::wav::details {

/// Walks the blocks of a "data" chunk; a block is read when `parse_block_` is called.
///
///     data      |frame 0|frame 1|frame 2|frame 3|frame 4|        block_size 2: three blocks,
///     blocks    |     index 0   |    index 1    |index 2|        the last one short
///
/// Iterators compare by `index` alone, and keep format and file alive by themselves.
///
/// Threads: iterators on one file may run on several threads.
template <typename T, typename R>
class BlockIterator {
public:
    std::shared_ptr<const Format> format;
    /// The part of the chunk from this block on.
    R data;
    /// Samples per block and channel.
    std::uint64_t block_size = 0;
    /// Samples that a block shares with its successor; less than `block_size`.
    std::uint64_t overlap = 0;
    /// The sample frame of the file at which block 0 starts.
    std::uint64_t offset = 0;
    std::uint64_t index = 0;
    /// The current block, once it was read.
    Cache<BlockInfo<T>> cache;

    /// Reads the current block into `cache`.
    ///
    /// False if the block is there already; if the width is none of 16, 24 and 32 bits; if a frame
    /// is too short for its samples (a frame that is too long is fine, the rest is skipped); or if
    /// the file cannot be read.  `cache` is then as it was.
    bool parse_block_() {
        if (cache.has_value()) return false;
        if (!format || !format->is_pcm() || format->block_align == 0) return false;
        switch (format->bits_per_sample) {
            case 16:
                return read_<bnb::Int16_tag>();
            case 24:
                return read_<bnb::Int24_tag>();
            case 32:
                return read_<bnb::Int32_tag>();
            default:
                return false;
        }
    }

    /// Goes on to the next block and drops the one that was read.
    BlockIterator& operator++() {
        ++index;
        R passed;
        // What is left of the file bounds the step, so that a huge block size cannot overflow it.
        const std::uint64_t align = format ? format->block_align : 0;
        const std::uint64_t hop = block_size - overlap;
        const std::uint64_t left = data.size();
        (void)data.pop_slice(passed, align > 0 && hop > left / align ? left : align * hop);
        cache.reset();
        return *this;
    }

    bool operator==(const BlockIterator& other) const { return index == other.index; }
    /// Blocks from `other` to this one.
    std::ptrdiff_t operator-(const BlockIterator& other) const {
        return static_cast<std::ptrdiff_t>(index - other.index);
    }

private:
    /// Bytes of one locked read, so that memory stays bounded whatever the block size.
    static constexpr std::uint64_t bytes_per_read = 1 << 16;

    template <typename Tag>
    bool read_() {
        const std::uint64_t align = format->block_align;
        const std::uint64_t frames = std::min(block_size, data.size() / align);
        // Asked before memory is, so that 65535 channels in a header alone cost nothing.
        if (frames > 0 && align < format->channels * bnb::Traits<Tag>::width) return false;

        BlockInfo<T> block;
        block.start = index * block_size + offset;
        block.stop = block.start + frames;
        block.channels.resize(format->channels);
        for (auto& channel : block.channels)
            channel.resize(frames);
        if (!read_samples_<Tag>(block, frames)) return false;
        cache.set(std::move(block));
        return true;
    }

    template <typename Tag>
    bool read_samples_(BlockInfo<T>& block, std::uint64_t frames) const {
        const std::uint64_t align = format->block_align;
        const std::uint64_t frames_per_read = std::max<std::uint64_t>(bytes_per_read / align, 1);
        R rest = data;
        std::string bytes;
        for (std::uint64_t at = 0; at < frames; at += frames_per_read) {
            const auto n = std::min(frames_per_read, frames - at);
            if (!rest.pop_slice(bytes, n * align)) return false;
            const char* from = bytes.data();
            for (auto& channel : block.channels) {
                decode_<Tag>(channel.data() + at, n, from, align);
                from += bnb::Traits<Tag>::width;
            }
        }
        return true;
    }

    /// Every sample of one channel: `n` numbers that lie `align` bytes apart.
    template <typename Tag>
    static void decode_(T* to, std::uint64_t n, const char* from, std::uint64_t align) {
        for (std::uint64_t i = 0; i < n; ++i)
            to[i] = static_cast<T>(
                bnb::details::get_bytes(from + i * align, Tag(), bnb::LittleEndian_tag()));
    }
};

}  // namespace vela::wav::details
