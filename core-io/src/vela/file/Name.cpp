#include <algorithm>
#include <ostream>
#include <vela/file/Name.hpp>

namespace vela::file {

Name& Name::operator<<(std::string_view piece) {
    const auto old_size = static_cast<std::ptrdiff_t>(text_.size());
    text_.append(piece);
    std::replace(text_.begin() + old_size, text_.end(), '\\', '/');
    return *this;
}

std::ostream& operator<<(std::ostream& out, const Name& name) {
    return out << name.str();
}

}  // namespace vela::file
