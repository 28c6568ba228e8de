#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vela/downmix/tdl/Parser.hpp>
#include <vela/file/read.hpp>

#include "dump.hpp"

namespace vela::downmix::tdl {

namespace {

std::string chapter() {
    const std::filesystem::path path(VELA_TEST_DATA "/../docs/metadata-file.md");
    std::string text;
    if (!file::read(text, file::Name(path.lexically_normal().string())))
        ADD_FAILURE() << "cannot read " << path;
    return text;
}

/// What stands between `begin` and the next `end`; empty if either is missing.
std::string between(const std::string& text, std::string_view begin, std::string_view end) {
    const auto at = text.find(begin);
    if (at == std::string::npos) return "";
    const auto first = at + begin.size();
    const auto last = text.find(end, first);
    return last == std::string::npos ? "" : text.substr(first, last - first);
}

/// The indented lines of a page that begin with a digit: single lines of a metadata file.
std::string single_lines(const std::string& text) {
    std::string lines;
    for (std::size_t at = 0; (at = text.find("\n    ", at)) != std::string::npos;) {
        at += 5;
        if (text[at] >= '0' && text[at] <= '9')
            lines += text.substr(at, text.find('\n', at) - at + 1);
    }
    return lines;
}

}  // namespace

TEST(MetadataChapter, ExampleSetsWhatItsTextTells) {
    Parser parser;
    const std::string example = between(chapter(), "```metadata\n", "```");
    ASSERT_TRUE(parser.parse(example)) << example;
    EXPECT_EQ(Dump::of(parser),
              "attn 0 9 6\n"
              "attn 0 10 6\n"
              "attn 48000 9 3\n"
              "meta 0 5 3\n"
              "gains 0 4 2 6 1 0.7\n"
              "gains 48000 -\n"
              "disabled 0 4 16385\n"
              "disabled 48000 -\n"
              "loudness 0 0 1 -24.5\n"
              "loudness 0 0 2 -24.5\n"
              "loudness 0 0 3 -23\n"
              "loudness 0 3 3 -1\n"
              "loudness 24000 4 3 -30.5\n"
              "default_gains 0 0 -144\n"
              "orbimix_preset 0 21\n"
              "room_type 0 2\n");
}

TEST(MetadataChapter, EveryLineItShowsCanBeRead) {
    Parser parser;
    const std::string lines = single_lines(chapter());
    ASSERT_TRUE(parser.parse(lines)) << lines;
    EXPECT_EQ(parser.attn.size(), 1u);
    EXPECT_EQ(parser.loudness.at(0).size(), 3u);
    EXPECT_EQ(parser.gains.size(), 2u);
}

// The table of channels is the one that the parser works with.
TEST(MetadataChapter, KnowsTheNamesOfAllChannels) {
    const std::string text = chapter();
    for (const auto& channel : api::channel::all()) {
        const auto row = "| " + std::to_string(channel.id()) + " | " + channel.short_name() + " |";
        EXPECT_NE(text.find(row), std::string::npos) << row;
    }
}

}  // namespace vela::downmix::tdl
