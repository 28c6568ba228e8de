#pragma once

#include <compare>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace vela::file {

/// A file name: a string that turns the backslashes of what is appended into forward slashes.
class Name {
public:
    Name() = default;
    /// Takes the text as it stands, backslashes included.
    explicit Name(std::string text) : text_(std::move(text)) {}

    [[nodiscard]] const std::string& str() const { return text_; }
    [[nodiscard]] bool empty() const { return text_.empty(); }

    /// Appends `piece`, its backslashes as forward slashes; what the name already held stays.
    Name& operator<<(std::string_view piece);

    bool operator==(const Name&) const = default;
    auto operator<=>(const Name&) const = default;

private:
    std::string text_;
};

/// Writes the name as it stands.
std::ostream& operator<<(std::ostream& out, const Name& name);

}  // namespace vela::file
