#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vela/Cache.hpp>
#include <vela/file/Range.hpp>
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
/// Compiled for samples of `int` and `file::Range` only.
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
    bool parse_block_();

    /// Whether the block is for `read_mono`: one channel, in a format that `parse_block_` takes.
    /// To be asked before there is memory for the samples.
    [[nodiscard]] bool is_mono() const;

    /// Reads the current block to where its samples shall be, past the cache; zeros fill up what it
    /// is shorter than `to`.  False if it is not mono, with `to` as it was, or if the file cannot
    /// be read, with part of the block in `to`.
    [[nodiscard]] bool read_mono(std::span<T> to);

    /// Goes on to the next block and drops the one that was read.
    BlockIterator& operator++();

    bool operator==(const BlockIterator& other) const { return index == other.index; }
    /// Blocks from `other` to this one.
    std::ptrdiff_t operator-(const BlockIterator& other) const {
        return static_cast<std::ptrdiff_t>(index - other.index);
    }

private:
    [[nodiscard]] bool is_readable_() const;
    [[nodiscard]] std::uint64_t nr_frames_() const;
    /// The first samples of each channel to where `to` says.
    bool read_(std::span<T* const> to, std::uint64_t frames);

    /// Bytes on their way from the file, kept for the sake of its memory.
    std::string bytes_;
};

extern template class BlockIterator<int, file::Range>;

}  // namespace vela::wav::details
