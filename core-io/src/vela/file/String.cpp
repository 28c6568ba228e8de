#include <sys/types.h>

#include <vela/file/String.hpp>
#include <vela/file/details/File.hpp>

namespace vela::file {

String::String(const Name& name)
    : buffer_(details::buffer_size), stream_(std::fopen(name.str().c_str(), "wb")) {
    if (stream_) std::setvbuf(stream_.get(), buffer_.data(), _IOFBF, buffer_.size());
}

void String::append(std::string_view bytes) {
    size_ += bytes.size();
    if (stream_) std::fwrite(bytes.data(), 1, bytes.size(), stream_.get());
}

bool String::overwrite(std::uint64_t offset, std::string_view bytes) {
    if (offset > size_ || bytes.size() > size_ - offset) return false;
    // Where there is no going back (a pipe) the patch is lost, rather than put at the end.
    if (!stream_ || fseeko(stream_.get(), static_cast<off_t>(offset), SEEK_SET) != 0) return true;
    std::fwrite(bytes.data(), 1, bytes.size(), stream_.get());
    fseeko(stream_.get(), 0, SEEK_END);
    return true;
}

}  // namespace vela::file
