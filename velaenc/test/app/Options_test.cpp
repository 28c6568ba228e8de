#include <gtest/gtest.h>

#include <app/Options.hpp>

namespace app {
namespace {

TEST(Options, ArgumentsAreCutAtSemicolons) {
    Options options;
    EXPECT_TRUE(options.add_argument("a(1);b(2)"));
    EXPECT_TRUE(options.add_argument(";;c;"));
    EXPECT_TRUE(options.add_argument(""));
    EXPECT_EQ(options.arguments, (std::list<std::string>{"a(1)", "b(2)", "c"}));
}

TEST(Options, ChannelsComeBeforeTheFirstColon) {
    Options options;
    EXPECT_TRUE(options.add_channel("left_3:c:\\a\\b.wav"));
    EXPECT_TRUE(options.add_channel("L_3:other")) << "twice the same is for the source to judge";
    EXPECT_FALSE(options.add_channel("L"));
    EXPECT_FALSE(options.add_channel(":a.wav"));
    EXPECT_FALSE(options.add_channel("FLc:a.wav"));
    ASSERT_EQ(options.channels.size(), 2u);
    EXPECT_EQ(options.channels[0].channel, vela::api::ChannelVariant(vela::api::channel::Left, 3));
    EXPECT_EQ(options.channels[0].filename.str(), "c:/a/b.wav");
}

struct OutputCase {
    const char* text;
    const char* format;  // null for none
    const char* filename;
};

class OptionsOutput : public testing::TestWithParam<OutputCase> {};

TEST_P(OptionsOutput, IsAFormatAndAName) {
    Options options;
    ASSERT_TRUE(options.set_output_format_and_fn(GetParam().text));
    EXPECT_EQ(options.output_format.has_value(), GetParam().format != nullptr);
    if (GetParam().format) {
        EXPECT_EQ(*options.output_format, GetParam().format);
    }
    EXPECT_EQ(options.output_fn->str(), GetParam().filename);

    EXPECT_FALSE(options.set_output_format_and_fn("again"));
    EXPECT_EQ(options.output_fn->str(), GetParam().filename);
}

INSTANTIATE_TEST_SUITE_P(Texts, OptionsOutput,
                         testing::Values(OutputCase{"out/x_", nullptr, "out/x_"},
                                         OutputCase{"wav:out\\x_", "wav", "out/x_"},
                                         OutputCase{"c:\\data\\x", "c", "/data/x"},
                                         OutputCase{"a:b:c", "a", "b:c"}, OutputCase{":", "", ""},
                                         OutputCase{"", nullptr, ""}));

}  // namespace
}  // namespace app
