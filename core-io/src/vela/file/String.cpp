#include <sys/types.h>

#include <vela/file/String.hpp>
#include <vela/file/details/File.hpp>

namespace vela::file {

String::String(const Name& name) : stream_(std::fopen(name.str().c_str(), "wb")) {
    // What goes to the stream goes to the file at once, from the pieces.
    if (stream_) std::setvbuf(stream_.get(), nullptr, _IONBF, 0);
    piece_.reserve(details::buffer_size);
}

String::~String() {
    write_all_();
}

void String::append(std::string_view bytes) {
    size_ += bytes.size();
    while (!bytes.empty()) {
        const auto now = bytes.substr(0, details::buffer_size - piece_.size());
        piece_ += now;
        bytes.remove_prefix(now.size());
        if (piece_.size() == details::buffer_size) write_all_();
    }
}

bool String::overwrite(std::uint64_t offset, std::string_view bytes) {
    if (offset > size_ || bytes.size() > size_ - offset) return false;
    write_all_();
    // Where there is no going back (a pipe) the patch is lost, rather than put at the end.
    if (!stream_ || fseeko(stream_.get(), static_cast<off_t>(offset), SEEK_SET) != 0) return true;
    write_(bytes);
    fseeko(stream_.get(), 0, SEEK_END);
    return true;
}

void String::write_all_() {
    write_(piece_);
    piece_.clear();
}

void String::write_(std::string_view bytes) {
    if (stream_) std::fwrite(bytes.data(), 1, bytes.size(), stream_.get());
}

}  // namespace vela::file
