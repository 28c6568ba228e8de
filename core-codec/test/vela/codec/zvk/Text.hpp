#pragma once

#include <cstdint>
#include <string>

namespace vela::codec::zvk::test {

/// `value` in `width` bits, the most significant first; zeros above bit 63.
inline std::string bits(unsigned long long value, unsigned width) {
    std::string text;
    while (width-- > 0)
        text += width < 64 && (value >> width & 1) != 0 ? '1' : '0';
    return text;
}

/// A writer whose bits can be compared with what a test spells out.
struct Text {
    using Cursor = std::string;
    static void put(Cursor& at, std::uint32_t value, unsigned width) { at += bits(value, width); }
};

}  // namespace vela::codec::zvk::test
