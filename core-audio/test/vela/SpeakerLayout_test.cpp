#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <vela/SpeakerLayout.hpp>

namespace vela {
namespace {

struct Row {
    std::uint32_t mask;
    std::vector<std::string> names;
    const char* channels;
};

// clang-format off
const std::vector<Row>& rows() {
    static const std::vector<Row> table{
        Row{0x8, {"mono_0_1", "0.1", "lfe"}, "LFE"},
        Row{0x4, {"mono_1_0", "mono", "1.0", "mono", "testmix1"}, "C"},
        Row{0x3, {"stereo_2_0", "stereo", "2.0"}, "L R"},
        Row{0xB, {"stereo_2_1", "2.1"}, "L R LFE"},
        Row{0x7, {"lcr"}, "L R C"},
        Row{0x47, {"lcrs"}, "L R C Cs"},
        Row{0x33, {"quad", "4.0"}, "L R Ls Rs"},
        Row{0x37, {"surround5.0", "5.0", "5.0surround"}, "L R C Ls Rs"},
        Row{0x3F, {"surround5.1", "5.1", "5.1surround"}, "L R C LFE Ls Rs"},
        Row{0x77, {"surround6.0", "6.0surround"}, "L R C Ls Rs Cs"},
        Row{0x7F, {"surround6.1", "6.1surround"}, "L R C LFE Ls Rs Cs"},
        Row{0x633, {"vela6.0", "vela222"}, "L R Ls Rs HL HR"},
        Row{0x1B7, {"surround7.0", "7.0", "7.0surround"}, "L R C Ls Rs Lb Rb"},
        Row{0x1BF, {"surround7.1", "7.1", "7.1surround"}, "L R C LFE Ls Rs Lb Rb"},
        Row{0x63F, {"height7.1", "7.1height"}, "L R C LFE Ls Rs HL HR"},
        Row{0x6633, {"8.0", "vela8.0"}, "L R Ls Rs HL HR HLs HRs"},
        Row{0x7BF, {"height9.1", "9.1height"}, "L R C LFE Ls Rs Lb Rb HL HR"},
        Row{0x6637, {"9.0", "vela9.0"}, "L R C Ls Rs HL HR HLs HRs"},
        Row{0x663F, {"9.1", "vela9.1"}, "L R C LFE Ls Rs HL HR HLs HRs"},
        Row{0x7637, {"10.0", "vela10.0"}, "L R C Ls Rs HL HR T HLs HRs"},
        Row{0x763F, {"10.1", "vela10.1"}, "L R C LFE Ls Rs HL HR T HLs HRs"},
        Row{0x7E37, {"11.0", "vela11.0", "551.0"}, "L R C Ls Rs HL HR HC T HLs HRs"},
        Row{0x7E3F, {"11.1", "vela11.1", "551.1"}, "L R C LFE Ls Rs HL HR HC T HLs HRs"},
        Row{0x67B7, {"11.0b", "vela11.0b", "74.0", "vela11.0_74"}, "L R C Ls Rs Lb Rb HL HR HLs HRs"},
        Row{0x67BF, {"11.1b", "vela11.1b", "74.1", "vela11.1_74"}, "L R C LFE Ls Rs Lb Rb HL HR HLs HRs"},
        Row{0x77B7, {"12.0", "vela12.0"}, "L R C Ls Rs Lb Rb HL HR T HLs HRs"},
        Row{0x77BF, {"12.1", "vela12.1"}, "L R C LFE Ls Rs Lb Rb HL HR T HLs HRs"},
        Row{0x7FB7, {"13.0", "vela13.0", "751.0"}, "L R C Ls Rs Lb Rb HL HR HC T HLs HRs"},
        Row{0x7FBF, {"13.1", "vela13.1", "751.1"}, "L R C LFE Ls Rs Lb Rb HL HR HC T HLs HRs"},
        Row{0xFFFFFF, {"22.2", "vela22.2"}, "L R C LFE Ls Rs Cs Lb Rb HL HR HC T HLs HRs HCs HLb HRb LC RC LFE2 BL BR BC"},
        Row{0x1000000, {"ambisonics", "ambi"}, "ambi"},
        Row{0x804, {"testmix2"}, "C HC"},
        Row{0x1804, {"testmix3"}, "C HC T"},
    };
    return table;
}
// clang-format on

std::string channels_of(const SpeakerLayout& layout) {
    std::string text;
    EXPECT_TRUE(layout.each_channel([&](const api::Channel& channel) {
        if (!text.empty()) text += ' ';
        text += channel.short_name();
        return true;
    }));
    return text;
}

TEST(SpeakerLayout, AllStandInTheOrderOfTheHelpText) {
    const auto& all = SpeakerLayout::all();
    ASSERT_EQ(all.size(), rows().size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(rows()[i].names.front());
        EXPECT_EQ(all[i].mask(), rows()[i].mask);
        EXPECT_EQ(all[i].names(), rows()[i].names);
        EXPECT_EQ(channels_of(all[i]), rows()[i].channels);
    }
}

TEST(SpeakerLayout, EveryNameIsFound) {
    for (const Row& row : rows())
        for (const auto& name : row.names) {
            SpeakerLayout found;
            EXPECT_TRUE(translate(found, name)) << name;
            EXPECT_EQ(found.mask(), row.mask) << name;
        }
}

TEST(SpeakerLayout, SpellingsThatAreUnderstood) {
    const std::vector<std::pair<const char*, std::uint32_t>> cases{
        {"MONO", 0x4},           {"1.0", 0x4},           {"TestMix1", 0x4},
        {"Surround5.1", 0x3F},   {"lfe", 0x8},           {"5p0", 0x37},
        {"5p1", 0x3F},           {"5.1", 0x3F},          {"5.1-surround", 0x3F},
        {"surround 5.1", 0x3F},  {"SURROUND_5p1", 0x3F}, {"stereo2__0", 0x3},
        {"stereo_2_0", 0x3},     {" _-22.2", 0xFFFFFF},  {"13p1", 0x7FBF},
        {"vela11.0_74", 0x67B7},
    };
    for (const auto& [name, mask] : cases) {
        SpeakerLayout found;
        EXPECT_TRUE(translate(found, name)) << name;
        EXPECT_EQ(found.mask(), mask) << name;
    }
}

TEST(SpeakerLayout, AnUnknownNameLeavesTheLayoutAlone) {
    // A capital P is no point; of each separator only one is passed over.
    for (const char* name : {"", "5P0", "stereo-2_0", "stereo20", "stereo2_0", "vela_11.0_74",
                             "5.1--surround", "5  .1", "5.2"}) {
        SpeakerLayout layout(0x7);
        EXPECT_FALSE(translate(layout, name)) << name;
        EXPECT_EQ(layout.mask(), 0x7u) << name;
    }
}

TEST(SpeakerLayout, OutsideTheRegistryThereAreNoNames) {
    EXPECT_TRUE(SpeakerLayout(0x1).names().empty());
    EXPECT_TRUE(SpeakerLayout().names().empty());
}

TEST(SpeakerLayout, NamesLookAtTheChannelBitsAlone) {
    const SpeakerLayout with_high_bits(0x3 | (std::uint64_t{1} << 40));
    EXPECT_EQ(with_high_bits.names().front(), "stereo_2_0");
}

TEST(SpeakerLayout, ChannelsComeByAscendingId) {
    std::vector<std::uint32_t> ids;
    EXPECT_TRUE(SpeakerLayout(0x7BF).each_channel([&](const api::Channel& channel) {
        ids.push_back(channel.id());
        return true;
    }));
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 7, 8, 9, 10}));
}

TEST(SpeakerLayout, TheWalkStopsWhereTheVisitorDoes) {
    int visits = 0;
    EXPECT_FALSE(
        SpeakerLayout(0x7BF).each_channel([&](const api::Channel&) { return ++visits < 3; }));
    EXPECT_EQ(visits, 3);
}

std::string streamed(std::uint64_t mask) {
    std::ostringstream text;
    SpeakerLayout(mask).stream(text);
    return text.str();
}

TEST(SpeakerLayout, StreamsTheHighestChannelFirst) {
    EXPECT_EQ(streamed(0x3), std::string(23, '0') + "11");
    EXPECT_EQ(streamed(0xFFFFFF), "0" + std::string(24, '1'));
    EXPECT_EQ(streamed(0x1000000), "1" + std::string(24, '0'));
}

}  // namespace
}  // namespace vela
