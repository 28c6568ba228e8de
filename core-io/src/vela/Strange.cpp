#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>
#include <vela/Strange.hpp>

namespace vela {
namespace {

/// The start of a range with a zero behind it, as the C conversions want it: the range itself may
/// end in the middle of a longer number.
class NumberText {
public:
    explicit NumberText(std::string_view rest) { rest.copy(chars_.data(), chars_.size() - 1); }
    [[nodiscard]] char* begin() { return chars_.data(); }

private:
    std::array<char, 30 + 1> chars_{};
};

}  // namespace

Strange::Strange(std::string text)
    : text_(std::make_shared<const std::string>(std::move(text))), end_(text_->size()) {}

Strange::Strange(std::shared_ptr<const std::string> text, std::uint64_t begin, std::uint64_t end)
    : text_(std::move(text)), begin_(begin), end_(end) {}

std::string Strange::to_str() const {
    return std::string(rest_());
}

void Strange::clear() {
    *this = Strange();
}

bool Strange::pop_until(std::string& out, char c) {
    Strange piece;
    if (!pop_until(piece, c)) return false;
    out = piece.to_str();
    return true;
}

bool Strange::pop_until(Strange& out, char c) {
    const auto at = rest_().find(c);
    if (at == std::string_view::npos) return false;
    Strange piece = front_(at);
    begin_ += at + 1;
    out = std::move(piece);
    return true;
}

bool Strange::pop_all(std::string& out) {
    if (empty()) return false;
    out = to_str();
    begin_ = end_;
    return true;
}

bool Strange::pop_line(Strange& out) {
    if (empty()) return false;
    const auto rest = rest_();
    const auto feed = rest.find('\n');
    if (feed == std::string_view::npos) {
        Strange line = *this;
        begin_ = end_;
        out = std::move(line);
        return true;
    }
    Strange line = front_(feed > 0 && rest[feed - 1] == '\r' ? feed - 1 : feed);
    begin_ += feed + 1;
    out = std::move(line);
    return true;
}

bool Strange::pop_if(std::string_view prefix) {
    if (!rest_().starts_with(prefix)) return false;
    begin_ += prefix.size();
    return true;
}

bool Strange::pop_any_of(std::string_view chars) {
    const auto taken = std::min(rest_().find_first_not_of(chars), rest_().size());
    begin_ += taken;
    return taken > 0;
}

bool Strange::pop_bracket(Strange& inner, std::string_view pair) {
    if (pair.size() != 2 || !pop_if(pair.substr(0, 1))) return false;
    const auto rest = rest_();
    std::uint64_t depth = 1;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] == pair[1])
            --depth;
        else if (rest[i] == pair[0])
            ++depth;
        if (depth > 0) continue;
        Strange enclosed = front_(i);
        begin_ += i + 1;
        inner = std::move(enclosed);
        return true;
    }
    return false;
}

std::string_view Strange::rest_() const {
    if (!text_) return {};
    return std::string_view(*text_).substr(begin_, end_ - begin_);
}

Strange Strange::front_(std::uint64_t size) const {
    return Strange(text_, begin_, begin_ + size);
}

bool Strange::pop_int64_(std::int64_t& out, int base) {
    NumberText text(rest_());
    char* stop = text.begin();
    const auto value = std::strtoll(text.begin(), &stop, base);
    if (stop == text.begin()) return false;
    begin_ += static_cast<std::uint64_t>(stop - text.begin());
    out = value;
    return true;
}

bool Strange::pop_double_(double& out) {
    NumberText text(rest_());
    char* stop = text.begin();
    // The program never calls setlocale, so that the decimal point is a dot.
    const auto value = std::strtod(text.begin(), &stop);
    if (stop == text.begin()) return false;
    begin_ += static_cast<std::uint64_t>(stop - text.begin());
    out = value;
    return true;
}

}  // namespace vela
