#include <gtest/gtest.h>

#include <app/profile/Factory.hpp>
#include <app/profile/VelaCodec.hpp>

namespace app::profile {
namespace {

using vela::Any;

bool set_argument(Interface& profile, const std::string& text) {
    return profile.set_option("argument", Any(text));
}

TEST(Factory, KnowsOneNameExactly) {
    EXPECT_NE(create("Vela-Codec"), nullptr);
    for (const char* const name : {"", "vela-codec", "Vela-Codec ", "Vela-Rx", "PS4"})
        EXPECT_EQ(create(name), nullptr) << name;
}

TEST(VelaCodec, SaysWhatItIs) {
    VelaCodec profile;
    EXPECT_EQ(profile.name(), "VelaCodec v3");
    EXPECT_EQ(profile.frame_size(), 1024u);
    EXPECT_TRUE(profile.set_option("frame_size", Any(std::uint64_t{77})));
    EXPECT_EQ(profile.frame_size(), 77u);
}

TEST(VelaCodec, DoneWithoutABlockIsAFailure) {
    VelaCodec profile;
    EXPECT_FALSE(profile.done());
}

TEST(VelaCodec, TakesEachOptionAsItsOwnTypeOnly) {
    VelaCodec profile;
    EXPECT_TRUE(profile.set_option("frame_count", Any())) << "whatever it is";
    EXPECT_TRUE(profile.set_option("nr_threads", Any(std::uint32_t{2})));
    EXPECT_FALSE(profile.set_option("nr_threads", Any(2)));
    EXPECT_TRUE(profile.set_option("sample_rate", Any(std::uint32_t{48000})));
    EXPECT_FALSE(profile.set_option("sample_rate", Any(std::uint64_t{48000})));
    EXPECT_FALSE(profile.set_option("frame_size", Any(std::uint32_t{1024})));
    EXPECT_TRUE(profile.set_option("speaker_layout", Any(std::string("9p1"))));
    EXPECT_FALSE(profile.set_option("speaker_layout", Any(std::string("9.2"))));
    EXPECT_FALSE(profile.set_option("speaker_layout", Any(vela::file::Name("9.1"))));
    EXPECT_TRUE(profile.set_option("output_filename", Any(vela::file::Name("x"))));
    EXPECT_FALSE(profile.set_option("output_filename", Any(std::string("x"))));
    EXPECT_TRUE(profile.set_option("output_format", Any(std::string("wav"))));
    EXPECT_TRUE(profile.set_option("multi_channel_export", Any(true)));
    EXPECT_FALSE(profile.set_option("multi_channel_export", Any(1)));
    EXPECT_TRUE(profile.set_option("data_filename", Any(vela::file::Name("x"))));
    EXPECT_FALSE(profile.set_option("argument", Any(1)));
    EXPECT_EQ(profile.error_msg(), "") << "a wrong type is no unknown name";
}

TEST(VelaCodec, AnUnknownNameIsTold) {
    VelaCodec profile;
    EXPECT_FALSE(profile.set_option("bitlines", Any(3)));
    EXPECT_EQ(profile.error_msg(), "Unknown option name bitlines");
    EXPECT_FALSE(set_argument(profile, "Dither(true)"));
    EXPECT_EQ(profile.error_msg(), "Unknown encoder argument \"Dither(true)\"");
}

struct ArgumentCase {
    const char* text;
    bool ok;
};

class VelaCodecArgument : public testing::TestWithParam<ArgumentCase> {};

TEST_P(VelaCodecArgument, IsAKeyAndABracket) {
    VelaCodec profile;
    EXPECT_EQ(set_argument(profile, GetParam().text), GetParam().ok);
    EXPECT_EQ(profile.error_msg(), "") << "the key is known";
}

INSTANTIATE_TEST_SUITE_P(
    Texts, VelaCodecArgument,
    testing::Values(
        ArgumentCase{"bitlines(3,12)", true}, ArgumentCase{"bitlines(3,14)", true},
        ArgumentCase{"bitlines( 3, 12 x)y", true}, ArgumentCase{"bitlines(3 ,12)", false},
        ArgumentCase{"bitlines(3)", false}, ArgumentCase{"bitlines 3,12", false},
        ArgumentCase{"bitlines(3,12", false}, ArgumentCase{"dither(true)", true},
        ArgumentCase{"dither(false)", true}, ArgumentCase{"dither(TRUE)", false},
        ArgumentCase{"dither(true )", false}, ArgumentCase{"dithers(true)", false},
        ArgumentCase{"dither()", false}, ArgumentCase{"centers_max(150)x", true},
        ArgumentCase{"centers_max(x)", false}, ArgumentCase{"gvm.allow_merge(false)", true},
        ArgumentCase{"gvm.update_all(true)", true},
        ArgumentCase{"gvm.force_origin_center(true)", true},
        ArgumentCase{"gvm.implementation(whatever)", true},
        ArgumentCase{"gvm.implementation", false},
        ArgumentCase{"gvm.randomize_deltas(false)", true}, ArgumentCase{"output.dbrms(a\\b)", true},
        ArgumentCase{"output.dbrmsfoo(x)", false}, ArgumentCase{"output.dbpeak()", true},
        ArgumentCase{"output.crest(x", false}, ArgumentCase{"output.centers(p_)", true},
        ArgumentCase{"native_content(false)", true}, ArgumentCase{"native_content(0)", false}));

}  // namespace
}  // namespace app::profile
