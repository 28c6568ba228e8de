#include <algorithm>
#include <vela/file/details/File.hpp>

namespace vela::file::details {

File::File(const Name& name) : name_(name), buffer_(buffer_size) {
    stream_.rdbuf()->pubsetbuf(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    stream_.open(name.str(), std::ios::binary | std::ios::ate);
    is_open_ = stream_.good();
    if (!is_open_) return;
    size_ = static_cast<std::uint64_t>(std::max<std::streamoff>(stream_.tellg(), 0));
    stream_.seekg(0);
}

bool File::read(std::string& buffer, std::uint64_t offset) {
    const std::lock_guard lock(mutex_);
    return seek_(offset) && read_(buffer.data(), buffer.size());
}

bool File::seek_(std::uint64_t offset) {
    if (offset > size_ || !stream_.good()) return false;
    if (position_ == offset) return true;
    stream_.seekg(static_cast<std::streamoff>(offset));
    if (!stream_.good()) return false;
    position_ = offset;
    return true;
}

bool File::read_(char* buffer, std::uint64_t n) {
    if (n > size_ - position_) return false;
    stream_.read(buffer, static_cast<std::streamsize>(n));
    if (!stream_.good()) return false;
    position_ += n;
    return true;
}

}  // namespace vela::file::details
