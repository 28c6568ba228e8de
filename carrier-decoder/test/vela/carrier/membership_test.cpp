#include <gtest/gtest.h>

#include <vela/carrier/membership.hpp>

namespace vela::carrier {
namespace {

using namespace api::channel::id;

const CarrierRecipe& surround_5_1() {
    return *find_recipe(api::SpeakerLayout(0x3F));
}

Block block_of(std::vector<ChannelId> channels, std::vector<Instruction> instructions) {
    Block block;
    block.header.channels = std::move(channels);
    block.instructions = std::move(instructions);
    return block;
}

struct Case {
    const char* name;
    std::vector<ChannelId> channels;
    std::vector<Instruction> instructions;
    const char* why;  ///< empty if the block is sound
};

class CheckRecipe : public testing::TestWithParam<Case> {};

TEST_P(CheckRecipe, LooksForWhatTheCarrierOfLeftMayHold) {
    const CarrierRecipe& recipe = surround_5_1();
    std::string why;
    const bool ok = check_recipe(why, block_of(GetParam().channels, GetParam().instructions),
                                 recipe, recipe.groups[0]);
    EXPECT_EQ(why, GetParam().why);
    EXPECT_EQ(ok, why.empty());
}

// Left, LeftSurround and Center stand in this carrier, in that order.
INSTANTIATE_TEST_SUITE_P(
    All, CheckRecipe,
    testing::Values(
        Case{"Whole", {Left, LeftSurround, Center}, {{30, {2}}}, ""},
        Case{"LeavesSilentOnesOut", {Left, Center}, {{30, {2}}, {64, {LeftSurround, 5}}}, ""},
        Case{"OnlyTheLast", {Center}, {{30, {2}}}, ""},
        Case{"OtherOrder",
             {Center, Left},
             {{30, {2}}},
             "channel Left does not belong there in this carrier"},
        Case{"Stranger",
             {Left, Right},
             {{30, {2}}},
             "channel Right does not belong there in this carrier"},
        Case{"Twice",
             {Left, Left},
             {{30, {2}}},
             "channel Left does not belong there in this carrier"},
        Case{"AttenuatedStranger",
             {Left},
             {{30, {2}}, {64, {Right, 5}}},
             "channel Right is attenuated but does not belong in this carrier"},
        Case{"OtherLayout",
             {Left},
             {{30, {1}}},
             "the input layout has the code 1, not 2: the block belongs to another layout"},
        Case{"NoLayout",
             {Left},
             {{71, {255}}},
             "the instructions do not begin with the one input layout"},
        Case{"LayoutTwice",
             {Left},
             {{30, {2}}, {30, {2}}},
             "the instructions do not begin with the one input layout"},
        Case{"NoInstructions",
             {Left},
             {},
             "the instructions do not begin with the one input layout"}),
    [](const auto& param) { return param.param.name; });

}  // namespace
}  // namespace vela::carrier
