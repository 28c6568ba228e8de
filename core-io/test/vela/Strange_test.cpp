#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>
#include <vela/Strange.hpp>

namespace vela {
namespace {

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    Strange cursor(text), line;
    while (cursor.pop_line(line))
        lines.push_back(line.to_str());
    return lines;
}

using Lines = std::vector<std::string>;

TEST(Strange, LinesOfFilesFromAnySystem) {
    EXPECT_EQ(lines_of("a\r\n\nb"), (Lines{"a", "", "b"}));
    EXPECT_EQ(lines_of("a\r"), (Lines{"a\r"}));
    EXPECT_EQ(lines_of("\r\n"), (Lines{""}));
    EXPECT_EQ(lines_of("a\r\r\n"), (Lines{"a\r"}));
    EXPECT_EQ(lines_of("a\n"), (Lines{"a"}));
    EXPECT_EQ(lines_of(""), Lines{});
}

TEST(Strange, LineOfASubRangeEndsWithIt) {
    Strange cursor("a)b\nc"), inner, line;
    ASSERT_TRUE(cursor.pop_until(inner, ')'));
    ASSERT_TRUE(inner.pop_line(line));
    EXPECT_EQ(line.to_str(), "a");
    EXPECT_FALSE(inner.pop_line(line));
    // A carriage return in front of the sub-range is not a part of its first line.
    Strange behind("\r\nx");
    EXPECT_TRUE(behind.pop_if("\r"));
    ASSERT_TRUE(behind.pop_line(line));
    EXPECT_EQ(line.to_str(), "");
}

TEST(Strange, UntilAMissingCharacterTakesNothing) {
    Strange cursor("abc"), part;
    std::string out = "untouched";
    EXPECT_FALSE(cursor.pop_until(out, ';'));
    EXPECT_FALSE(cursor.pop_until(part, ';'));
    EXPECT_EQ(out, "untouched");
    EXPECT_TRUE(part.empty());
    ASSERT_TRUE(cursor.pop_all(out));
    EXPECT_EQ(out, "abc");
    EXPECT_FALSE(cursor.pop_all(out));
}

TEST(Strange, UntilTakesTheSeparatorToo) {
    Strange cursor("L:x;;y"), part;
    std::string out;
    ASSERT_TRUE(cursor.pop_until(out, ':'));
    EXPECT_EQ(out, "L");
    ASSERT_TRUE(cursor.pop_until(part, ';'));
    EXPECT_EQ(part.to_str(), "x");
    ASSERT_TRUE(cursor.pop_until(part, ';'));
    EXPECT_TRUE(part.empty());
    EXPECT_EQ(cursor.to_str(), "y");
    // A range does not look beyond its own end.
    EXPECT_FALSE(part.pop_until(out, 'y'));
}

TEST(Strange, PrefixesAndSets) {
    Strange cursor("  \tkey key");
    EXPECT_FALSE(cursor.pop_if("key"));
    EXPECT_TRUE(cursor.pop_any_of(" \t"));
    EXPECT_FALSE(cursor.pop_any_of(" \t"));
    EXPECT_FALSE(cursor.pop_if("key key key"));
    EXPECT_TRUE(cursor.pop_if("key"));
    EXPECT_TRUE(cursor.pop_if(""));
    EXPECT_TRUE(cursor.pop_any_of(" yek"));
    EXPECT_TRUE(cursor.empty());
    EXPECT_FALSE(cursor.pop_any_of("x"));
}

struct BracketCase {
    const char* text;
    const char* pair;
    bool ok;
    const char* inner;
    const char* left;
};

TEST(Strange, Brackets) {
    const BracketCase cases[] = {
        {"(1,(2))x", "()", true, "1,(2)", "x"},
        {"()x", "()", true, "", "x"},
        {"(1", "()", false, "", "1"},
        {"((1)", "()", false, "", "(1)"},
        {"(", "()", false, "", ""},
        {"x(1)", "()", false, "", "x(1)"},
        {"", "()", false, "", ""},
        {"(1)", "(", false, "", "(1)"},
        {"(1)", "(1)", false, "", "(1)"},
        {"|a|b", "||", true, "a", "b"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        Strange cursor(c.text), inner;
        EXPECT_EQ(cursor.pop_bracket(inner, c.pair), c.ok);
        EXPECT_EQ(inner.to_str(), c.inner);
        EXPECT_EQ(cursor.to_str(), c.left);
    }
}

struct IntCase {
    const char* text;
    int base;
    bool ok;
    std::int64_t value;
    const char* left;
};

TEST(Strange, Integers) {
    const IntCase cases[] = {
        {"  42x", 10, true, 42, "x"},
        {"x", 10, false, -7, "x"},
        {"", 10, false, -7, ""},
        {"-", 10, false, -7, "-"},
        {"   ", 10, false, -7, "   "},
        {"+5", 10, true, 5, ""},
        {"0x1Fg", 16, true, 31, "g"},
        {"1f", 16, true, 31, ""},
        {"0x1F", 10, true, 0, "x1F"},
        {"99999999999999999999", 10, true, INT64_MAX, ""},
        {"-99999999999999999999", 10, true, INT64_MIN, ""},
        {"000000000000000000000000000012345", 10, true, 12, "345"},  // 30 characters and no more
        {"                              1", 10, false, -7, "                              1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        Strange cursor(c.text);
        std::int64_t value = -7;
        EXPECT_EQ(cursor.pop_int(value, c.base), c.ok);
        EXPECT_EQ(value, c.value);
        EXPECT_EQ(cursor.to_str(), c.left);
    }
}

TEST(Strange, IntegersNarrowWithoutARangeTest) {
    unsigned char byte = 0;
    EXPECT_TRUE(Strange("300").pop_int(byte, 10));
    EXPECT_EQ(byte, 44);
    std::uint32_t word = 0;
    EXPECT_TRUE(Strange("-1").pop_int(word));
    EXPECT_EQ(word, 0xFFFFFFFFu);
    EXPECT_TRUE(Strange("4294967298").pop_int(word));
    EXPECT_EQ(word, 2u);
    std::uint64_t wide = 0;
    EXPECT_TRUE(Strange("-1").pop_int(wide));
    EXPECT_EQ(wide, UINT64_MAX);
}

TEST(Strange, NumbersEndWhereTheRangeEnds) {
    Strange digits("1213"), front;
    int value = 0;
    ASSERT_TRUE(digits.pop_until(front, '3'));
    ASSERT_TRUE(front.pop_int(value));
    EXPECT_EQ(value, 121);
    EXPECT_TRUE(front.empty());
}

struct FloatCase {
    const char* text;
    bool ok;
    double value;
    const char* left;
};

TEST(Strange, Reals) {
    const FloatCase cases[] = {
        {"-3.5dB", true, -3.5, "dB"},
        {"  1e-3,", true, 1e-3, ","},
        {".5", true, 0.5, ""},
        {"1,5", true, 1, ",5"},
        {"1e", true, 1, "e"},
        {"0x10", true, 16, ""},
        {"-infx", true, -HUGE_VAL, "x"},
        {"dB", false, 9, "dB"},
        {"", false, 9, ""},
        {"-", false, 9, "-"},
        {"0.00000000000000000000000000001", true, 0, "1"},  // 30 characters and no more
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        Strange cursor(c.text);
        double value = 9;
        EXPECT_EQ(cursor.pop_float(value), c.ok);
        EXPECT_EQ(value, c.value);
        EXPECT_EQ(cursor.to_str(), c.left);
    }
}

TEST(Strange, FloatIsRoundedThroughDouble) {
    float value = 0;
    ASSERT_TRUE(Strange("0.1").pop_float(value));
    EXPECT_EQ(value, 0.1f);
    ASSERT_TRUE(Strange("1e300").pop_float(value));
    EXPECT_EQ(value, HUGE_VALF);
    // Just above the middle of two floats, but the middle itself once it is a double.
    ASSERT_TRUE(Strange("1.00000005960464477540").pop_float(value));
    EXPECT_EQ(value, 1.0f);
}

TEST(Strange, AClearedCursorGivesNothing) {
    for (Strange cursor : {Strange(), Strange("abc")}) {
        cursor.clear();
        EXPECT_EQ(cursor.to_str(), "");
        EXPECT_TRUE(cursor.empty());
        EXPECT_EQ(cursor.size(), 0u);
        std::string text;
        Strange part;
        int number = 0;
        double real = 0;
        EXPECT_FALSE(cursor.pop_all(text));
        EXPECT_FALSE(cursor.pop_line(part));
        EXPECT_FALSE(cursor.pop_until(part, 'a'));
        EXPECT_FALSE(cursor.pop_bracket(part, "()"));
        EXPECT_FALSE(cursor.pop_any_of("abc"));
        EXPECT_FALSE(cursor.pop_if("a"));
        EXPECT_FALSE(cursor.pop_int(number));
        EXPECT_FALSE(cursor.pop_float(real));
    }
}

TEST(Strange, CopiesShareTheTextAndOutliveTheirOrigin) {
    auto cursor = std::make_unique<Strange>("a line\nanother");
    const Strange copy = *cursor;
    Strange line;
    ASSERT_TRUE(cursor->pop_line(line));
    cursor.reset();
    EXPECT_EQ(line.to_str(), "a line");
    EXPECT_EQ(copy.to_str(), "a line\nanother");
}

TEST(Strange, ACursorMayBeItsOwnOutput) {
    Strange cursor("(a;b)\nrest");
    ASSERT_TRUE(cursor.pop_line(cursor));
    ASSERT_TRUE(cursor.pop_bracket(cursor, "()"));
    ASSERT_TRUE(cursor.pop_until(cursor, ';'));
    EXPECT_EQ(cursor.to_str(), "a");
}

TEST(Strange, WhateverIsThrownAtItAFailureTakesNothing) {
    std::mt19937 random(20);
    for (int round = 0; round < 3000; ++round) {
        std::string text(random() % 40, ' ');
        for (auto& c : text)
            c = "01-+.exn(); \r\n"[random() % 14];
        const Strange before(text);
        Strange part;
        std::string piece;
        unsigned number = 0;
        float real = 0;
        for (int operation = 0; operation < 6; ++operation) {
            Strange cursor = before;
            const bool taken = operation == 0   ? cursor.pop_until(piece, ';')
                               : operation == 1 ? cursor.pop_line(part)
                               : operation == 2 ? cursor.pop_int(number)
                               : operation == 3 ? cursor.pop_float(real)
                               : operation == 4 ? cursor.pop_any_of("01")
                                                : cursor.pop_all(piece);
            SCOPED_TRACE(text);
            EXPECT_EQ(cursor.size() < text.size(), taken);
        }
    }
}

}  // namespace
}  // namespace vela
