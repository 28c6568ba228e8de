#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <vela/Range.hpp>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frames.hpp>
#include <vela/api/SampleSpan.hpp>
#include <vela/file/Name.hpp>
#include <vela/file/Range.hpp>
#include <vela/thread/Errands.hpp>
#include <vela/wav/Parser.hpp>

namespace vela {

/// Mono WAV files, one per channel, as one stream of blocks of equal length.
///
/// Set the frame size and limit, `add` each channel, `prepare` once; then `get` and `pop_front` in
/// turn.  Samples come as they stand in the files: no filter, no clipping, any width that the WAV
/// reader knows.  One thread uses a source; others only run the errands that it posts.  Nothing
/// prints: a false is all there is.
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

    /// Leaves the reading of the current block to whoever has time, until `get` asks for it: an
    /// errand for each channel.  `errands` must outlive the source.
    void read_ahead(thread::Errands& errands);

    /// In Hz; 0 before `prepare` has read a file.
    [[nodiscard]] std::uint32_t sample_rate() const { return sample_rate_; }
    /// Bits per sample.
    [[nodiscard]] std::uint32_t bit_depth() const { return bit_depth_; }
    /// Blocks of the shortest file, whatever the limit; -1 if there is no file.
    [[nodiscard]] std::int32_t nr_frames() const { return nr_frames_; }

private:
    using Parser = wav::Parser<T, file::Range>;
    using Frame = api::Frame<T, K>;
    using Blocks = decltype(Parser::blocks);

    struct Info {
        Parser parser;
        file::Name filename;
        /// What is not delivered yet; its begin is the read position.
        Blocks blocks;
        /// First the current block, where it could be read ahead; then memory for the next ones,
        /// which others may still share: by its turn they mostly do not.
        std::array<Frame, 3> ahead;
        bool is_ahead = false;
    };
    struct Finish {
        void operator()(thread::Errands* errands) const { errands->finish(); }
    };

    bool open_(Info& info);
    /// Whether there is a block that can go into a frame.
    static bool has_block_(const Info& info);
    static bool read_(Frame& frame, Info& info);
    static bool take_(Frame& frame, Info& info);
    void read_ahead_(const K& key, Info& info) const;

    std::uint64_t frame_size_ = 0;
    std::uint64_t offset_ = 0;
    std::uint32_t sample_rate_ = 0;
    std::int32_t frame_limit_ = -1;
    /// Counts down; a negative number never gets to 0.
    std::int32_t frames_left_ = 0;
    std::int32_t nr_frames_ = -1;
    std::map<K, Info> inputs_;
    api::SampleSpan span_;
    std::uint32_t bit_depth_ = 0;
    /// Where blocks are being read ahead; they are done before anything else goes.
    std::unique_ptr<thread::Errands, Finish> errands_;
};

extern template class AudioSource<int, api::ChannelVariant>;

}  // namespace vela
