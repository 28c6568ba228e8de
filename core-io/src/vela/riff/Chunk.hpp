#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vela/bnb/details/serialize.hpp>

namespace vela::riff {

/// Writes one chunk of a RIFF file: the header at once, the length when the chunk is closed.
///
///     start: id, 4 bytes | start + 4: length, 4 bytes | content | pad byte 0 if length is odd
///
/// Chunks nest by writing to the same sink; close the inner ones first.  The length does not count
/// the pad byte, but that of the enclosing chunk does.  From 4 GiB on the length loses its high
/// bits.  `S` is a `file::String`, or what can append, overwrite and tell its size like one.
template <typename S>
class Chunk {
public:
    /// Writes the header.  The sink must outlive the chunk.
    Chunk(S& sink, std::string_view id) : sink_(&sink), start_(sink.size()) {
        clean_id_(id);
        bnb::details::serialize(*sink_, 0, bnb::UInt32_tag(), bnb::LittleEndian_tag());
    }
    /// A chunk inside of `parent`.
    Chunk(Chunk& parent, std::string_view id) : Chunk(*parent.sink_, id) {}
    Chunk(const Chunk&) = delete;
    Chunk& operator=(const Chunk&) = delete;
    ~Chunk() { commit(); }

    [[nodiscard]] bool is_open() const { return open_; }

    /// Writes the form type, which stands right behind the header.  False anywhere else.
    bool setSubchunkId(std::string_view id) {
        if (!open_ || sink_->size() - start_ != header_size) return false;
        clean_id_(id);
        return true;
    }

    /// Writes the low bytes of `value`, as many as `Tag` is wide.  False once the chunk is closed.
    template <typename Tag>
    bool add(std::int64_t value) {
        if (!open_) return false;
        bnb::details::serialize(*sink_, value, Tag(), bnb::LittleEndian_tag());
        return true;
    }

    /// Writes bytes as they stand.  False once the chunk is closed.
    bool append(std::string_view bytes) {
        if (!open_) return false;
        sink_->append(bytes);
        return true;
    }

    /// Closes the chunk: patches its length and pads it.  False if it is closed already.
    bool commit() {
        if (!open_) return false;
        open_ = false;
        const std::uint64_t length = sink_->size() - header_size - start_;
        std::string bytes;
        bnb::details::serialize(bytes, length, bnb::UInt32_tag(), bnb::LittleEndian_tag());
        sink_->overwrite(start_ + id_size, bytes);
        if (length % 2 != 0) sink_->append(std::string_view("\0", 1));
        return true;
    }

private:
    static constexpr std::size_t id_size = 4;
    static constexpr std::size_t header_size = 8;

    /// An id is four characters: longer ones are cut, shorter ones filled up with zeros.
    void clean_id_(std::string_view id) {
        std::string clean(id.substr(0, id_size));
        clean.resize(id_size, '\0');
        sink_->append(clean);
    }

    S* sink_;
    std::uint64_t start_;
    bool open_ = true;
};

}  // namespace vela::riff
