#pragma once

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vela/Strange.hpp>

#include "Bytes.hpp"

namespace vela::fuzz {

namespace strange_details {

/// A cursor, and the text that it must still hold by the plain rules of each operation.
struct Pair {
    Strange cursor;
    std::string rest;

    [[nodiscard]] bool agree() const {
        return cursor.to_str() == rest && cursor.size() == rest.size() &&
               cursor.empty() == rest.empty();
    }
};

inline std::string take(std::string& text, std::size_t size, std::size_t skipped = 0) {
    std::string taken = text.substr(0, size);
    text.erase(0, size + skipped);
    return taken;
}

inline bool until(Pair& pair, char c, Pair& piece) {
    const auto at = pair.rest.find(c);
    if (!pair.cursor.pop_until(piece.cursor, c)) return at == std::string::npos;
    if (at == std::string::npos) return false;
    piece.rest = take(pair.rest, at, 1);
    return true;
}

inline bool until_text(Pair& pair, char c) {
    const auto at = pair.rest.find(c);
    std::string piece;
    if (!pair.cursor.pop_until(piece, c)) return at == std::string::npos;
    return at != std::string::npos && piece == take(pair.rest, at, 1);
}

inline bool line(Pair& pair, Pair& piece) {
    const bool any = !pair.rest.empty();
    if (pair.cursor.pop_line(piece.cursor) != any) return false;
    if (!any) return true;
    const auto feed = pair.rest.find('\n');
    const bool ended = feed != std::string::npos;
    piece.rest = take(pair.rest, ended ? feed : pair.rest.size(), ended ? 1 : 0);
    if (ended && piece.rest.ends_with('\r')) piece.rest.pop_back();
    return true;
}

inline bool prefix(Pair& pair, std::string_view text) {
    const bool there = pair.rest.starts_with(text);
    if (there) pair.rest.erase(0, text.size());
    return pair.cursor.pop_if(text) == there;
}

inline bool any_of(Pair& pair, std::string_view chars) {
    std::size_t size = 0;
    while (size < pair.rest.size() && chars.find(pair.rest[size]) != std::string_view::npos)
        ++size;
    pair.rest.erase(0, size);
    return pair.cursor.pop_any_of(chars) == (size > 0);
}

inline bool bracket(Pair& pair, Pair& piece) {
    const bool popped = pair.cursor.pop_bracket(piece.cursor, "()");
    if (!pair.rest.starts_with('(')) return !popped;
    pair.rest.erase(0, 1);  // even where the closing one is missing
    int depth = 1;
    for (std::size_t i = 0; i < pair.rest.size(); ++i) {
        depth += pair.rest[i] == '(' ? 1 : pair.rest[i] == ')' ? -1 : 0;
        if (depth > 0) continue;
        piece.rest = take(pair.rest, i, 1);
        return popped;
    }
    return !popped;
}

template <typename T>
bool integer(Pair& pair, int base) {
    const std::string head = pair.rest.substr(0, 30);
    char* stop = nullptr;
    const long long expected = std::strtoll(head.c_str(), &stop, base);
    pair.rest.erase(0, static_cast<std::size_t>(stop - head.c_str()));
    T value = 77;
    const bool popped = pair.cursor.pop_int(value, base);
    if (popped != (stop != head.c_str())) return false;
    return value == (popped ? static_cast<T>(expected) : T{77});
}

inline bool real(Pair& pair) {
    const std::string head = pair.rest.substr(0, 30);
    char* stop = nullptr;
    const double expected = std::strtod(head.c_str(), &stop);
    pair.rest.erase(0, static_cast<std::size_t>(stop - head.c_str()));
    double value = 77;
    const bool popped = pair.cursor.pop_float(value);
    if (popped != (stop != head.c_str())) return false;
    return !popped || std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(expected);
}

/// One operation on `pair`; one that gives a piece puts it into `piece`.
inline bool operate(Pair& pair, Pair& piece, std::uint8_t what, char c) {
    const std::string_view operand(&c, 1);
    switch (what % 12) {
        case 0:
            return until(pair, c, piece);
        case 1:
            return until_text(pair, c);
        case 2:
            return line(pair, piece);
        case 3:
            return prefix(pair, operand);
        case 4:
            return any_of(pair, " \t");
        case 5:
            return any_of(pair, operand);
        case 6:
            return bracket(pair, piece);
        case 7:
            return integer<std::uint8_t>(pair, 10);
        case 8:
            return integer<std::int64_t>(pair, 2 + static_cast<unsigned char>(c) % 35);
        case 9:
            return integer<std::uint32_t>(pair, 16);
        case 10:
            return real(pair);
        default:
            return prefix(pair, pair.rest.substr(0, static_cast<unsigned char>(c) % 8));
    }
}

}  // namespace strange_details

/// Runs operations on a text: the first byte says how many, each has two bytes, the text follows.
/// False if the cursor does not give and leave what a plain string would.
inline bool strange(std::string_view input) {
    using namespace strange_details;
    Bytes bytes(input);
    const std::size_t nr_operations = bytes.byte() % 64;
    Bytes script(bytes.text(2 * nr_operations));
    Pair pair{Strange(std::string(bytes.rest())), std::string(bytes.rest())};
    while (!script.empty()) {
        const auto what = script.byte();
        Pair piece = {Strange("untouched"), "untouched"};
        if (!operate(pair, piece, what, static_cast<char>(script.byte()))) return false;
        if (!pair.agree() || !piece.agree()) return false;
        if (what >= 128 && piece.rest != "untouched") pair = piece;
    }
    std::string last;
    return pair.cursor.pop_all(last) == !pair.rest.empty() && last == pair.rest &&
           pair.cursor.empty();
}

}  // namespace vela::fuzz
