#include <array>
#include <charconv>
#include <vela/gnuplot/details/append.hpp>

namespace vela::gnuplot::details {

namespace {

// Holds any 64-bit integer, and any real at six digits ("-1.23457e-308").
using Digits = std::array<char, 32>;

constexpr int stream_precision = 6;

template <typename T, typename... Format>
void append_number(std::string& buffer, T value, Format... format) {
    Digits digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, format...).ptr;
    buffer.append(digits.data(), end);
}

}  // namespace

void append(std::string& buffer, std::int32_t value) {
    append_number(buffer, value);
}

void append(std::string& buffer, std::size_t value) {
    append_number(buffer, value);
}

void append(std::string& buffer, double value) {
    append_number(buffer, value, std::chars_format::general, stream_precision);
}

void append(std::string& buffer, std::string_view text) {
    buffer += '"';
    buffer += text;
    buffer += '"';
}

}  // namespace vela::gnuplot::details
