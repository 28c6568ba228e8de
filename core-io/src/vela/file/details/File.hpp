#pragma once

#include <cstdint>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>
#include <vela/file/Name.hpp>

namespace vela::file::details {

/// Bytes per call of the system: some twenty blocks of audio, of which each file has 47 a second.
inline constexpr std::size_t buffer_size = std::size_t{1} << 16;

/// One open input file, shared by all the cursors on it.
///
/// It remembers where its stream stands, so that reads that follow each other need no seek, which
/// would throw the stream's buffer away.
///
/// Threads: `read` may be called from several.
class File {
public:
    /// Opens for binary reading; `is_open` says whether that worked.
    explicit File(const Name& name);

    [[nodiscard]] bool is_open() const { return is_open_; }
    [[nodiscard]] const Name& name() const { return name_; }
    /// Length in bytes when the file was opened.
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Fills the whole of `buffer` with the bytes from `offset` on.  False if the file has fewer,
    /// or after any error on the stream, from which it does not recover.
    [[nodiscard]] bool read(std::string& buffer, std::uint64_t offset);

private:
    bool seek_(std::uint64_t offset);
    bool read_(char* buffer, std::uint64_t n);

    Name name_;
    std::vector<char> buffer_;  // the stream's; outlives it
    std::ifstream stream_;
    bool is_open_ = false;
    std::uint64_t size_ = 0;
    std::uint64_t position_ = 0;
    std::mutex mutex_;
};

}  // namespace vela::file::details
