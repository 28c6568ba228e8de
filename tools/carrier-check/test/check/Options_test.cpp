#include <gtest/gtest.h>

#include <check/Options.hpp>

namespace check {
namespace {

using Words = std::vector<std::string>;

TEST(Options, TakesAllThatItKnows) {
    Options options;
    std::string why;
    ASSERT_TRUE(options.parse(why, {"--frame-size", "1024", "a_L.wav", "--layout", "9.1",
                                    "--original", "L=l=1.wav", "--original", "HeightLeft=hl.wav",
                                    "--rebuild", "out/", "--json", "--verbose", "b.wav"}))
        << why;
    EXPECT_EQ(options.frame_size, 1024u);
    EXPECT_EQ(options.layout, "9.1");
    ASSERT_EQ(options.files.size(), 2u);
    EXPECT_EQ(options.files[1].str(), "b.wav");
    ASSERT_EQ(options.originals.size(), 2u);
    EXPECT_EQ(options.originals.at(vela::api::channel::id::Left).str(), "l=1.wav");
    EXPECT_EQ(options.rebuild_prefix, "out/");
    EXPECT_TRUE(options.json && options.verbose);
    EXPECT_FALSE(options.help);
}

TEST(Options, HelpNeedsNothingElse) {
    Options options;
    std::string why;
    EXPECT_TRUE(options.parse(why, {"--help"}));
    EXPECT_TRUE(options.help);
}

struct Case {
    Words words;
    const char* why;
};

class BadOptions : public testing::TestWithParam<Case> {};

TEST_P(BadOptions, AreToldInASentence) {
    Options options;
    std::string why;
    EXPECT_FALSE(options.parse(why, GetParam().words));
    EXPECT_EQ(why, GetParam().why);
}

INSTANTIATE_TEST_SUITE_P(
    Words, BadOptions,
    testing::Values(Case{{}, "no file is given"}, Case{{"--frame-size", "16"}, "no file is given"},
                    Case{{"a.wav"}, "--frame-size is missing"},
                    Case{{"a.wav", "--frame-size"}, "--frame-size needs a value"},
                    Case{{"--frame-size", "17", "a"},
                         "17 is no frame size: 16 to 4096 in steps of 16, or 1000"},
                    Case{{"--frame-size", "0", "a"},
                         "0 is no frame size: 16 to 4096 in steps of 16, or 1000"},
                    Case{{"--frame-size", "-16", "a"},
                         "-16 is no frame size: 16 to 4096 in steps of 16, or 1000"},
                    Case{{"--frame-size", "4112", "a"},
                         "4112 is no frame size: 16 to 4096 in steps of 16, or 1000"},
                    Case{{"--frame-size", "16x", "a"},
                         "16x is no frame size: 16 to 4096 in steps of 16, or 1000"},
                    Case{{"--original", "L", "a"},
                         "--original takes NAME=FILE with the name of a channel, not L"},
                    Case{{"--original", "X=a", "a"},
                         "--original takes NAME=FILE with the name of a channel, not X=a"},
                    Case{{"--original", "L=a", "--original", "left=b"},
                         "there are two originals for channel left"},
                    Case{{"--what", "a"}, "--what is no option"}));

}  // namespace
}  // namespace check
