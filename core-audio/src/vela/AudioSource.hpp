#pragma once

#include <cstdint>
#include <map>
#include <vector>
#include <vela/Range.hpp>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frames.hpp>
#include <vela/api/SampleSpan.hpp>
#include <vela/file/Name.hpp>
#include <vela/file/Range.hpp>
#include <vela/wav/Parser.hpp>

namespace vela {

/// Mono WAV files, one per channel, as one stream of blocks of equal length.
///
/// Set the frame size and limit, `add` each channel, `prepare` once; then `get` and `pop_front` in
/// turn.  Samples come as they stand in the files: no filter, no clipping, any width that the WAV
/// reader knows.  Nothing prints: a false is all there is.
///
///     file L    |-block 0-|-block 1-|-blo         the shortest file ends the stream; its last
///     file R    |-block 0-|-block 1-|-block 2-|-  block is filled up with zeros
///
/// Made for int and `api::ChannelVariant`.
template <typename T, typename K>
class AudioSource {
public:
    using Frames = api::Frames<T, K>;

    AudioSource() = default;
    AudioSource(const AudioSource&) = delete;
    AudioSource& operator=(const AudioSource&) = delete;

    /// Samples per block and channel; at least 1, or `prepare` refuses every file.
    void set_frame_size(std::uint64_t frame_size) { frame_size_ = frame_size; }
    /// First sample wanted of each file; 0 by default.
    void set_offset(std::uint64_t offset) { offset_ = offset; }
    /// Blocks wanted, at most; all for a negative number, the default.
    void set_frame_limit(std::int32_t frame_limit) { frame_limit_ = frame_limit; }

    /// Assigns a file to a channel.  False if the channel has another file already.
    [[nodiscard]] bool add(const K& key, const file::Name& filename);

    /// Opens the files.  False if one is no PCM file, or they differ in rate or width.
    ///
    /// With no files at all it is true, with rate and width 0.
    [[nodiscard]] bool prepare();

    /// Reads the current block of each channel into `frames`, and its place into `span`.
    ///
    /// Called again before `pop_front` it gives the same block.  False at the end of the stream;
    /// that is also the first block that cannot be read, or is not mono.  `frames` may then hold
    /// some of the channels.
    [[nodiscard]] bool get(Frames& frames, api::SampleSpan& span);

    /// Goes on to the next block.
    void pop_front();

    /// In Hz; 0 before `prepare` has read a file.
    [[nodiscard]] std::uint32_t sample_rate() const { return sample_rate_; }
    /// Bits per sample.
    [[nodiscard]] std::uint32_t bit_depth() const { return bit_depth_; }
    /// Blocks of the shortest file, whatever the limit; -1 if there is no file.
    [[nodiscard]] std::int32_t nr_frames() const { return nr_frames_; }

private:
    using Parser = wav::Parser<T, file::Range>;
    using Frame = api::Frame<T, K>;

    struct Info {
        Parser parser;
        file::Name filename;
        /// If not, the file counts as one that has ended, and no memory is wanted for its samples.
        bool is_mono = false;
        /// What is not read yet; its begin is the read position.
        decltype(Parser::blocks) blocks;
        /// Memory of blocks: those that others still have, and those to read the next ones into.
        std::vector<Frame> kept;
    };

    bool open_(Info& info);
    Frame& free_block_(Info& info) const;

    std::uint64_t frame_size_ = 0;
    std::uint64_t offset_ = 0;
    std::uint32_t sample_rate_ = 0;
    std::int32_t frame_limit_ = -1;
    /// Blocks of the stream from the current one on.
    std::int32_t frames_left_ = 0;
    std::int32_t nr_frames_ = -1;
    std::map<K, Info> inputs_;
    api::SampleSpan span_;
    std::uint32_t bit_depth_ = 0;
};

extern template class AudioSource<int, api::ChannelVariant>;

}  // namespace vela
