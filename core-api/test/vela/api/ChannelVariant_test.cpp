#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/NamingSchema.hpp>

namespace vela::api {
namespace {

struct Case {
    const char* name;
    std::string text;
    channel::id::Value id;
    std::uint32_t variant;
};

class ParseVariant : public testing::TestWithParam<Case> {};

TEST_P(ParseVariant, GivesChannelAndVariant) {
    ChannelVariant parsed(channel::Top, 77);
    EXPECT_TRUE(parsed.parse(GetParam().text));
    EXPECT_EQ(parsed, ChannelVariant(Channel::create(GetParam().id), GetParam().variant));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ParseVariant,
    testing::Values(
        Case{"NoNumber", "L", channel::id::Left, 0}, Case{"Number", "L_2", channel::id::Left, 2},
        Case{"EmptyNumber", "L_", channel::id::Left, 0},
        Case{"NotANumber", "L_x", channel::id::Left, 0},
        Case{"NumberAndMore", "hls_12abc", channel::id::HeightLeftSurround, 12},
        Case{"SecondUnderscoreEndsTheNumber", "L_2_3", channel::id::Left, 2},
        Case{"SpaceBeforeTheNumber", "L_ 2", channel::id::Left, 2},
        Case{"ANegativeNumberWraps", "L_-1", channel::id::Left, 0xFFFFFFFF},
        Case{"ALargeNumberIsCutTo32Bits", "L_4294967299", channel::id::Left, 3},
        // no more than 30 characters of the number are read
        Case{"JustWithinTheCut", "L_" + std::string(28, '0') + "19", channel::id::Left, 19},
        Case{"ALongNumberIsCut", "L_" + std::string(29, '0') + "19", channel::id::Left, 1},
        Case{"FullName", "LeftBack_1", channel::id::LeftBack, 1},
        Case{"AmbisonicsW", "ambi_W", channel::id::Ambisonics, 0},
        Case{"AmbisonicsX", "ambi_X", channel::id::Ambisonics, 1},
        Case{"AmbisonicsY", "ambi_Y", channel::id::Ambisonics, 2},
        Case{"AmbisonicsZ", "ambi_Z", channel::id::Ambisonics, 3},
        Case{"AmbisonicsR", "ambi_R", channel::id::Ambisonics, 4},
        Case{"AmbisonicsS", "ambi_S", channel::id::Ambisonics, 5},
        Case{"AmbisonicsT", "AMBI_T", channel::id::Ambisonics, 6},
        Case{"AmbisonicsU", "ambi_U", channel::id::Ambisonics, 7},
        Case{"AmbisonicsV", "Ambisonics_V", channel::id::Ambisonics, 8}),
    [](const auto& param_info) { return param_info.param.name; });

TEST(ChannelVariant, UnknownChannelsAndComponentsAreRefused) {
    for (const char* text : {"", "_", "_1", "x", "x_1", "ambi", "ambi_", "ambi_Q", "ambi_w",
                             "ambi_WX", "ambi_0", "L 1"}) {
        ChannelVariant parsed;
        EXPECT_FALSE(parsed.parse(text)) << text;
    }
    ChannelVariant kept(channel::Top, 3);
    EXPECT_FALSE(kept.parse("x_1"));
    EXPECT_EQ(kept, ChannelVariant(channel::Top, 3));
}

TEST(ChannelVariant, NamesFollowTheSchema) {
    const NamingSchema nhk("NHK");
    ChannelVariant parsed;
    EXPECT_TRUE(parsed.parse("BL_1"));
    EXPECT_EQ(parsed, ChannelVariant(channel::LeftBack, 1));
}

TEST(ChannelVariant, ADefaultOneIsNoChannel) {
    EXPECT_FALSE(ChannelVariant().channel.valid());
    EXPECT_EQ(ChannelVariant().variant, 0u);
}

TEST(ChannelVariant, IsOrderedByIdThenVariant) {
    const std::vector<ChannelVariant> ascending{
        ChannelVariant(channel::Left, 0),       ChannelVariant(channel::Left, 2),
        ChannelVariant(channel::Left, ~0u),     ChannelVariant(channel::Right, 0),
        ChannelVariant(channel::Ambisonics, 1), ChannelVariant()};
    for (std::size_t a = 0; a < ascending.size(); ++a)
        for (std::size_t b = 0; b < ascending.size(); ++b) {
            EXPECT_EQ(ascending[a] < ascending[b], a < b) << a << " " << b;
            EXPECT_EQ(ascending[a] == ascending[b], a == b) << a << " " << b;
        }
}

}  // namespace
}  // namespace vela::api
