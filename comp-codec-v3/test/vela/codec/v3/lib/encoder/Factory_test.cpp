#include <gtest/gtest.h>

#include <vela/CarrierRecipe.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/codec/v3/lib/encoder/Factory.hpp>

namespace vela::codec::v3::encoder {
namespace {

// Typed once more: carrier mask and the input masks that may go into it.
const std::map<std::uint32_t, std::vector<std::uint32_t>> allowed{
    {4, {3, 4, 2052, 6148}},
    {3, {7, 51, 55, 71, 1587}},
    {11, {63}},
    {51, {26163}},
    {55, {119, 439, 26167, 30263, 32311}},
    {63, {127, 447, 1599, 26175, 30271, 32319}},
    {439, {26551, 30647, 32695}},
    {447, {1983, 26559, 30655, 32703}}};

TEST(Factory, MakesTheKnownPairsAndNoOther) {
    for (const auto& input : SpeakerLayout::all())
        for (const auto& [carrier, inputs] : allowed) {
            const bool known = std::ranges::find(inputs, input.mask()) != inputs.end();
            std::shared_ptr<IEncoder> encoder;
            EXPECT_EQ(create(encoder, input, api::SpeakerLayout(carrier), 0), known);
            ASSERT_EQ(encoder != nullptr, known);
            if (!known) continue;
            EXPECT_EQ(encoder->input_layout(), input);
            EXPECT_EQ(encoder->output_layout().mask(), carrier);
        }
}

TEST(Factory, ARefusalLeavesTheResultAloneAndHighBitsDoNotCount) {
    std::shared_ptr<IEncoder> encoder;
    ASSERT_TRUE(create(encoder, api::SpeakerLayout(1ull << 40 | 7), api::SpeakerLayout(3), 0));
    const auto before = encoder;
    EXPECT_FALSE(create(encoder, api::SpeakerLayout(7), api::SpeakerLayout(4), 0));
    EXPECT_EQ(encoder, before);
}

}  // namespace
}  // namespace vela::codec::v3::encoder
