#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>
#include <vela/CarrierRecipe.hpp>
#include <vela/SpeakerLayout.hpp>

namespace vela {
namespace {

struct Row {
    std::uint32_t input;
    const char* name;
    std::uint32_t carrier;
    std::uint32_t code;
    const char* groups;
};

// clang-format off
const std::vector<Row>& rows() {
    static const std::vector<Row> table{
        Row{0x4, "mono_1_0", 0x4, 128,
            "Center (Center)"},
        Row{0x3, "stereo_2_0", 0x4, 64,
            "Center (Left, Right)"},
        Row{0x7, "lcr", 0x3, 66,
            "Left (Left, Center); Right (Right, Center)"},
        Row{0x47, "lcrs", 0x3, 8,
            "Left (Left, Center, CenterSurround); Right (Right, Center, CenterSurround)"},
        Row{0x33, "quad", 0x3, 12,
            "Left (Left, LeftSurround); Right (Right, RightSurround)"},
        Row{0x37, "surround5.0", 0x3, 1,
            "Left (Left, LeftSurround, Center); Right (Right, RightSurround, Center)"},
        Row{0x633, "vela6.0", 0x3, 11,
            "Left (Left, LeftSurround, HeightLeft); Right (Right, RightSurround, HeightRight)"},
        Row{0x3F, "surround5.1", 0xB, 2,
            "Left (Left, LeftSurround, Center); Right (Right, RightSurround, Center); LFE (LFE)"},
        Row{0x77, "surround6.0", 0x37, 67,
            "Left (Left); Right (Right); Center (Center); "
            "LeftSurround (LeftSurround, CenterSurround); "
            "RightSurround (RightSurround, CenterSurround)"},
        Row{0x1B7, "surround7.0", 0x37, 69,
            "Left (Left); Center (Center); Right (Right); LeftSurround (LeftSurround, LeftBack); "
            "RightSurround (RightSurround, RightBack)"},
        Row{0x6637, "9.0", 0x37, 71,
            "Left (Left, HeightLeft); Center (Center); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround, HeightLeftSurround); "
            "RightSurround (RightSurround, HeightRightSurround)"},
        Row{0x7637, "10.0", 0x37, 72,
            "Left (Left, HeightLeft, Top); Center (Center); Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top)"},
        Row{0x7E37, "11.0", 0x37, 73,
            "Left (Left, HeightLeft, Top); Center (Center, HeightCenter); "
            "Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top)"},
        Row{0x7F, "surround6.1", 0x3F, 68,
            "Left (Left); Right (Right); Center (Center); "
            "LeftSurround (LeftSurround, CenterSurround); "
            "RightSurround (RightSurround, CenterSurround); LFE (LFE)"},
        Row{0x1BF, "surround7.1", 0x3F, 70,
            "Left (Left); Center (Center); Right (Right); LeftSurround (LeftSurround, LeftBack); "
            "RightSurround (RightSurround, RightBack); LFE (LFE)"},
        Row{0x63F, "height7.1", 0x3F, 15,
            "Left (Left, HeightLeft); Center (Center); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround); RightSurround (RightSurround); LFE (LFE)"},
        Row{0x663F, "9.1", 0x3F, 30,
            "Left (Left, HeightLeft); Center (Center); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround, HeightLeftSurround); "
            "RightSurround (RightSurround, HeightRightSurround); LFE (LFE)"},
        Row{0x763F, "10.1", 0x3F, 40,
            "Left (Left, HeightLeft, Top); Center (Center); Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top); LFE (LFE)"},
        Row{0x7E3F, "11.1", 0x3F, 50,
            "Left (Left, HeightLeft, Top); Center (Center, HeightCenter); "
            "Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top); LFE (LFE)"},
        Row{0x6633, "8.0", 0x33, 20,
            "Left (Left, HeightLeft); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround, HeightLeftSurround); "
            "RightSurround (RightSurround, HeightRightSurround)"},
        Row{0x67B7, "11.0b", 0x1B7, 74,
            "Left (Left, HeightLeft); Center (Center); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround, HeightLeftSurround); "
            "RightSurround (RightSurround, HeightRightSurround); LeftBack (LeftBack); "
            "RightBack (RightBack)"},
        Row{0x77B7, "12.0", 0x1B7, 76,
            "Left (Left, HeightLeft, Top); Center (Center); Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top); LeftBack (LeftBack); "
            "RightBack (RightBack)"},
        Row{0x7FB7, "13.0", 0x1B7, 78,
            "Left (Left, HeightLeft, Top); Center (Center, HeightCenter); "
            "Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top); LeftBack (LeftBack); "
            "RightBack (RightBack)"},
        Row{0x7BF, "height9.1", 0x1BF, 75,
            "Left (Left, HeightLeft); Center (Center); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround); RightSurround (RightSurround); LeftBack (LeftBack); "
            "RightBack (RightBack); LFE (LFE)"},
        Row{0x67BF, "11.1b", 0x1BF, 54,
            "Left (Left, HeightLeft); Center (Center); Right (Right, HeightRight); "
            "LeftSurround (LeftSurround, HeightLeftSurround); "
            "RightSurround (RightSurround, HeightRightSurround); LeftBack (LeftBack); "
            "RightBack (RightBack); LFE (LFE)"},
        Row{0x77BF, "12.1", 0x1BF, 77,
            "Left (Left, HeightLeft, Top); Center (Center); Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top); LeftBack (LeftBack); "
            "RightBack (RightBack); LFE (LFE)"},
        Row{0x7FBF, "13.1", 0x1BF, 62,
            "Left (Left, HeightLeft, Top); Center (Center, HeightCenter); "
            "Right (Right, HeightRight, Top); "
            "LeftSurround (LeftSurround, HeightLeftSurround, Top); "
            "RightSurround (RightSurround, HeightRightSurround, Top); LeftBack (LeftBack); "
            "RightBack (RightBack); LFE (LFE)"},
        Row{0x804, "testmix2", 0x4, 129,
            "Center (Center, HeightCenter)"},
        Row{0x1804, "testmix3", 0x4, 130,
            "Center (Center, HeightCenter, Top)"},
    };
    return table;
}
// clang-format on

std::string name_of(api::channel::id::Value id) {
    return api::Channel::create(id).full_name();
}

// "Left (Left, HeightLeft); Center (Center)"
std::string text_of(std::span<const CarrierRecipe::Group> groups) {
    std::string text;
    for (const auto& group : groups) {
        if (!text.empty()) text += "; ";
        text += name_of(group.carrier);
        const char* separator = " (";
        for (const auto member : group.active_members()) {
            text += separator;
            text += name_of(member);
            separator = ", ";
        }
        text += ")";
    }
    return text;
}

TEST(CarrierRecipe, WhatADecoderExpects) {
    ASSERT_EQ(carrier_recipes().size(), rows().size());
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.name);
        SpeakerLayout input;
        ASSERT_TRUE(translate(input, row.name));
        EXPECT_EQ(input.mask(), row.input);
        const CarrierRecipe* recipe = find_recipe(input);
        ASSERT_NE(recipe, nullptr);
        EXPECT_EQ(recipe->input, row.input);
        EXPECT_EQ(recipe->carrier, row.carrier);
        EXPECT_EQ(recipe->code, row.code);
        EXPECT_EQ(text_of(recipe->groups), row.groups);
    }
}

TEST(CarrierRecipe, GroupsCoverTheCarrierAndUseTheWholeInput) {
    for (const CarrierRecipe& recipe : carrier_recipes()) {
        SCOPED_TRACE(recipe.input);
        std::uint32_t carriers = 0;
        std::uint32_t members = 0;
        for (const auto& group : recipe.groups) {
            EXPECT_EQ(carriers >> group.carrier & 1u, 0u) << "one group per carrier channel";
            carriers |= 1u << group.carrier;
            for (const auto member : group.active_members())
                members |= 1u << member;
        }
        EXPECT_EQ(carriers, recipe.carrier);
        EXPECT_EQ(members, recipe.input);
    }
}

TEST(CarrierRecipe, CarriersComeFirstSaveThatStereoBecomesMono) {
    for (const CarrierRecipe& recipe : carrier_recipes())
        for (const auto& group : recipe.groups)
            EXPECT_EQ(group.active_members().front() == group.carrier, recipe.input != 0x3);
}

TEST(CarrierRecipe, CodesAreTheirOwn) {
    std::set<std::uint32_t> codes;
    for (const CarrierRecipe& recipe : carrier_recipes())
        EXPECT_TRUE(codes.insert(recipe.code).second) << recipe.code;
}

TEST(CarrierRecipe, LayoutsWithoutACarrier) {
    for (const char* name : {"mono_0_1", "stereo_2_1", "22.2", "ambisonics"}) {
        SpeakerLayout layout;
        ASSERT_TRUE(translate(layout, name));
        EXPECT_EQ(find_recipe(layout), nullptr) << name;
    }
    EXPECT_EQ(find_recipe(api::SpeakerLayout()), nullptr);
    EXPECT_EQ(find_recipe(api::SpeakerLayout(0x1)), nullptr);
}

TEST(CarrierRecipe, OnlyTheChannelBitsCount) {
    const api::SpeakerLayout stereo(0x3 | (std::uint64_t{1} << 32));
    ASSERT_NE(find_recipe(stereo), nullptr);
    EXPECT_EQ(find_recipe(stereo)->input, 0x3u);
}

}  // namespace
}  // namespace vela
