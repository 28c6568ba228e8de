#pragma once

#include <string>

namespace vela::codec::zvk::test {

/// A writer whose bits can be compared with what a test spells out.
struct Text {
    using Cursor = std::string;
    static void put(Cursor& at, bool bit) { at += bit ? '1' : '0'; }
};

/// `value` in `width` bits, the most significant first.
inline std::string bits(unsigned long long value, unsigned width) {
    std::string text;
    while (width-- > 0)
        text += (value >> width & 1) != 0 ? '1' : '0';
    return text;
}

}  // namespace vela::codec::zvk::test
