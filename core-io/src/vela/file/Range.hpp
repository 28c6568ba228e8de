#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vela/bnb/details/bytes.hpp>
#include <vela/file/Name.hpp>
#include <vela/file/details/File.hpp>

namespace vela::file {

/// A byte range of a file, and a cursor that consumes it from the front.
///
/// A `pop_` operation takes something and returns true, or takes nothing and returns false.
/// Copies and sub-ranges share the open file and move on their own; the file stays open for as
/// long as the last of them lives.
///
/// Threads: a range belongs to one thread; ranges on the same file may live on several.
class Range {
public:
    /// Without a file: empty, and every `pop_` fails.
    Range() = default;
    /// All of the file; without a file if it cannot be opened.
    explicit Range(const Name& name);

    [[nodiscard]] bool is_open() const { return file_ != nullptr; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    /// Bytes not yet taken.
    [[nodiscard]] std::uint64_t size() const { return end_ - begin_; }

    /// Reads and takes the next `n` bytes.
    [[nodiscard]] bool pop_slice(std::string& out, std::uint64_t n);
    /// Takes the next `n` bytes as a range of their own; nothing is read.
    [[nodiscard]] bool pop_slice(Range& out, std::uint64_t n);
    /// Takes the next `n` bytes without looking at them.
    [[nodiscard]] bool skip(std::uint64_t n);
    /// Takes `expected` if the range starts with it.
    [[nodiscard]] bool pop_if(std::string_view expected);

    /// Takes one number of the format `Tag`, sign-extended to `T` and never scaled.
    template <typename Tag, typename Order, typename T>
    [[nodiscard]] bool pop_raw(T& out) {
        std::string bytes;
        if (!pop_slice(bytes, bnb::Traits<Tag>::width)) return false;
        out = static_cast<T>(bnb::details::get_bytes(bytes.data(), Tag(), Order()));
        return true;
    }

private:
    std::shared_ptr<details::File> file_;
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
};

}  // namespace vela::file
