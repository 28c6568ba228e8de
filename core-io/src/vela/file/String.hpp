#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vela/file/Name.hpp>

namespace vela::file {

/// An output file that is written from front to back, counts its bytes and can patch what it has
/// written.
///
/// If the file cannot be created, nothing tells: writes are counted and lost.
///
/// Bytes go to the file in pieces of 64 KB.
class String {
public:
    /// Creates the file, or empties the one that is there.
    explicit String(const Name& name);
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

    void write_all_();
    void write_(std::string_view bytes);

    std::unique_ptr<std::FILE, Close> stream_;
    std::uint64_t size_ = 0;
    std::string piece_;  // not at the file yet
};

}  // namespace vela::file
