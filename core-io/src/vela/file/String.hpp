#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vela/file/Name.hpp>
#include <vela/thread/Chore.hpp>

namespace vela::file {

/// An output file that is written from front to back, counts its bytes and can patch what it has
/// written.
///
/// If the file cannot be created, nothing tells: writes are counted and lost.
///
/// Bytes go to the file in pieces of 64 KB.  To write one takes as long as a small candidate of the
/// encoder does; with errands it is left to whoever has time, while the next piece fills up:
///
///     append      |---- piece ----|---- piece ----|---- piece ----|
///     errands                      write the 1st   write the 2nd
///
/// Threads:  one at a time uses a file; others only run the errands that it posts.
class String {
public:
    /// Creates the file, or empties the one that is there.  `errands`, if any, must outlive it.
    explicit String(const Name& name, thread::Errands* errands = nullptr);
    String(const String&) = delete;
    String& operator=(const String&) = delete;
    ~String();

    /// Bytes appended so far.
    [[nodiscard]] std::uint64_t size() const { return size_; }

    void append(std::string_view bytes);

    /// Writes over bytes that were appended before.  False, and nothing is written, if they were
    /// not: this makes no file longer.
    bool overwrite(std::uint64_t offset, std::string_view bytes);

private:
    struct Close {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };

    void write_piece_();
    void write_all_();
    void write_(std::string_view bytes);

    std::unique_ptr<std::FILE, Close> stream_;
    std::uint64_t size_ = 0;
    std::string piece_;         // not at the file yet
    std::string piece_behind_;  // what that chore writes
    std::optional<thread::Chore> write_behind_;
};

}  // namespace vela::file
