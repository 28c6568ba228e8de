#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/riff/Parser.hpp>

namespace vela::riff {
namespace {

using namespace testing_support;

bool parse(Parser<file::Range>& parser, const std::string& bytes) {
    const TempFile file(bytes);
    file::Range range(file.name());
    return parser.parse_(range);
}

std::string content(const Parser<file::Range>& parser, const std::string& id) {
    auto range = parser.chunk(id);
    std::string out = "unreadable";
    EXPECT_TRUE(range.pop_slice(out, range.size()));
    return out;
}

TEST(RiffParser, FindsChunksById) {
    Parser<file::Range> parser;
    ASSERT_TRUE(parse(parser, riff_file(chunk("LIST", "xx") + chunk("data", "abcd"))));
    EXPECT_EQ(parser.type, "WAVE");
    EXPECT_EQ(parser.chunks.size(), 2u);
    EXPECT_EQ(content(parser, "data"), "abcd");
    EXPECT_TRUE(parser.chunk("fmt ").empty());
}

TEST(RiffParser, OfTwoChunksWithOneIdTheLastCounts) {
    Parser<file::Range> parser;
    ASSERT_TRUE(parse(parser, riff_file(chunk("data", "old!") + chunk("data", "newest"))));
    EXPECT_EQ(content(parser, "data"), "newest");
}

TEST(RiffParser, ThePadByteIsNoPartOfItsChunk) {
    Parser<file::Range> parser;
    ASSERT_TRUE(parse(parser, riff_file(chunk("odd ", "abc") + chunk("next", "de"))));
    EXPECT_EQ(content(parser, "odd "), "abc");
    EXPECT_EQ(content(parser, "next"), "de");
}

TEST(RiffParser, TheOuterLengthIsNotTrusted) {
    for (const std::uint32_t length : {0u, 1u, 0xFFFFFFFFu}) {
        Parser<file::Range> parser;
        EXPECT_TRUE(parse(parser, "RIFF" + u32(length) + "WAVE" + chunk("data", "ab")));
        EXPECT_EQ(content(parser, "data"), "ab");
    }
}

TEST(RiffParser, AFormWithoutChunksIsFine) {
    Parser<file::Range> parser;
    EXPECT_TRUE(parse(parser, riff_file("", "????")));
    EXPECT_TRUE(parser.chunks.empty());
}

TEST(RiffParser, AnythingLeftOverOrMissingIsAFault) {
    const std::string odd = riff_file(chunk("odd ", "abc"));
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"empty file", ""},
        {"other magic", "RIFX" + u32(4) + "WAVE"},
        {"no type", "RIFF" + u32(4)},
        {"pad byte missing", odd.substr(0, odd.size() - 1)},
        {"size past the end", riff_file("data" + u32(5) + "abcd")},
        {"largest size", riff_file("data" + u32(0xFFFFFFFF) + "abcd")},
        {"trailing bytes", riff_file(chunk("data", "ab") + "1234567")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Parser<file::Range> parser;
        EXPECT_FALSE(parse(parser, c.bytes));
    }
}

TEST(RiffParser, AnotherFileForgetsTheFirst) {
    Parser<file::Range> parser;
    ASSERT_TRUE(parse(parser, riff_file(chunk("data", "ab"))));
    EXPECT_FALSE(parse(parser, "none"));
    EXPECT_TRUE(parser.type.empty());
    EXPECT_TRUE(parser.chunks.empty());
}

}  // namespace
}  // namespace vela::riff
