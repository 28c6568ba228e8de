#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>
#include <vela/Range.hpp>
#include <vela/file/Name.hpp>
#include <vela/file/String.hpp>
#include <vela/riff/Chunk.hpp>
#include <vela/wav/Format.hpp>

namespace vela::wav {

/// Writes a PCM WAV file, front to back, as samples arrive.
///
///     0 "RIFF" length "WAVE" | 12 "fmt " 16 format | 36 "data" length | 44 samples [pad byte]
///
/// The lengths are 0 until `commit` or the destructor patches them, so that a run that ends early
/// leaves a valid file.  Samples are right-justified integers of `bits_per_sample` (8, 16, 24 or
/// 32) bits.  A file that cannot be created gives no failure: what is written is lost.
class FileWriter {
public:
    using Samples = Range<const int*>;

    /// Creates the file and writes its header.  The format is taken as it is.
    FileWriter(const file::Name& name, const Format& format);
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;
    ~FileWriter() { commit(); }

    /// Appends the samples of a file with one channel.
    ///
    /// False if the file is finished, has other than one channel or a width that cannot be written;
    /// and at the first sample that 16 or 24 bits cannot hold, which is told on standard error:
    /// those before it stay written, it and the rest are not.
    [[nodiscard]] bool add_frame(const Samples& samples);

    /// Appends samples interleaved: the first of each range, in the order of the ranges, then the
    /// second of each, and so on.
    ///
    /// There must be one range per channel, at least one, all of one length.  False as above, or if
    /// the ranges do not fit.
    [[nodiscard]] bool add_block(const std::vector<Samples>& channels);

    /// Finishes the file.  False if it is finished already.
    bool commit();

private:
    [[nodiscard]] bool is_open_() const { return data_ && data_->is_open(); }
    bool add_(std::span<const Samples> channels);
    template <typename Tag>
    bool add_as_(std::span<const Samples> channels);
    /// All samples in the order of the file; good until the next call.
    std::span<const int> interleaved_(std::span<const Samples> channels);

    Format format_;
    file::String file_;
    riff::Chunk<file::String> riff_;
    /// The open "data" chunk, ended before the chunk around it.
    std::unique_ptr<riff::Chunk<file::String>> data_;
    /// Samples and bytes on their way to the file, kept for the sake of their memory.
    std::vector<int> samples_;
    std::string bytes_;
};

}  // namespace vela::wav
