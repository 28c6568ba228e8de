#include <utility>
#include <vela/file/Range.hpp>

namespace vela::file {

Range::Range(const Name& name) : file_(std::make_shared<details::File>(name)) {
    if (file_->is_open())
        end_ = file_->size();
    else
        file_.reset();
}

bool Range::pop_slice(std::string& out, std::uint64_t n) {
    if (!file_ || n > size()) return false;
    out.resize(n);
    if (!file_->read(out, begin_)) return false;
    begin_ += n;
    return true;
}

bool Range::pop_slice(Range& out, std::uint64_t n) {
    Range slice = *this;
    if (!skip(n)) return false;
    slice.end_ = begin_;
    out = std::move(slice);
    return true;
}

bool Range::skip(std::uint64_t n) {
    if (!file_ || n > size()) return false;
    begin_ += n;
    return true;
}

bool Range::pop_if(std::string_view expected) {
    Range ahead = *this;
    std::string bytes;
    if (!ahead.pop_slice(bytes, expected.size()) || bytes != expected) return false;
    *this = std::move(ahead);
    return true;
}

}  // namespace vela::file
