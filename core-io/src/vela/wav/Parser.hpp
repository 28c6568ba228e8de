#pragma once

#include <cstdint>
#include <memory>
#include <vela/Range.hpp>
#include <vela/file/Name.hpp>
#include <vela/riff/Parser.hpp>
#include <vela/wav/Format.hpp>
#include <vela/wav/details/BlockIterator.hpp>

namespace vela::wav {

/// Checks a WAV file and lays a sequence of blocks over its samples, of which it reads none.
///
/// Set `block_size`, and `offset` if the first frames are not wanted, then call `parse`.  It takes
/// PCM of any width (format tag 1, or extensible with all bits valid); whether the width can be
/// read shows at the first block.  A parser may be used again; iterators outlive it.
template <typename T, typename R>
class Parser {
public:
    /// Empty until a parse finds a format that it accepts.
    std::shared_ptr<const Format> format;
    riff::Parser<R> riff;
    /// Whole sample frames of the "data" chunk from `offset` on.
    std::uint64_t nr_frames = 0;

    /// Samples per block and channel, at least 1.
    std::uint64_t block_size = 0;
    /// Samples that a block shares with its successor, less than `block_size`.
    std::uint64_t overlap = 0;
    /// First sample frame wanted.
    std::uint64_t offset = 0;

    /// Never empty after a success: a file without samples has one block without samples.
    vela::Range<details::BlockIterator<T, R>> blocks;

    [[nodiscard]] bool parse(const file::Name& name) { return parse_(R(name)); }

    [[nodiscard]] bool parse_(const R& range) {
        format.reset();
        blocks = {};
        if (block_size == 0) return false;
        R rest = range;
        if (!riff.parse_(rest) || riff.type != "WAVE") return false;

        auto found = std::make_shared<Format>();
        R fmt = riff.chunk("fmt ");
        if (!found->parse(fmt) || !found->is_pcm()) return false;
        format = std::move(found);
        return parse_data_();
    }

private:
    [[nodiscard]] bool parse_data_() {
        R data = riff.chunk("data");
        const std::uint64_t align = format->block_align;
        if (align == 0 || offset > data.size() / align) return false;
        if (offset > 0 && !data.skip(offset * align)) return false;
        nr_frames = data.size() / align;
        if (overlap >= block_size) return false;

        details::BlockIterator<T, R> first;
        first.format = format;
        first.data = data;
        first.block_size = block_size;
        first.overlap = overlap;
        first.offset = offset;
        auto last = first;
        last.index = nr_blocks_();
        blocks = {std::move(first), std::move(last)};
        return true;
    }

    [[nodiscard]] std::uint64_t nr_blocks_() const {
        if (nr_frames < block_size) return 1;
        const std::uint64_t hop = block_size - overlap;
        return (nr_frames - overlap - 1 + hop) / hop;
    }
};

}  // namespace vela::wav
