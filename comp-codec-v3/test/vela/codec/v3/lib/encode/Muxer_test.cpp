#include <gtest/gtest.h>

#include <vela/CarrierRecipe.hpp>
#include <vela/codec/v3/lib/CarrierRecord.hpp>
#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/Muxer.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

using Opcodes = std::vector<unsigned>;

Opcodes opcodes_of(const Group& group) {
    Opcodes opcodes;
    for (const auto& instruction : group.record.instructions)
        opcodes.push_back(static_cast<unsigned>(instruction.opcode));
    return opcodes;
}

/// A winner of one channel with room for all instructions.
Group winner(void (*set)(Group&) = [](Group&) {}) {
    Group group = group_of(8, {music(256, 1)});
    set(group);
    Chain chain;
    EXPECT_EQ(chain(group), Chain::Code::ok);
    return group;
}

TEST(Muxer, LaysTheMixAboveTheBitlines) {
    Group group = winner();
    ASSERT_TRUE(Muxer()(group));
    EXPECT_EQ(group.frame.bit_depth, 24u);
    EXPECT_EQ(group.frame.key.channel, api::channel::Left);
    for (std::size_t t = 0; t < group.size(); ++t)
        EXPECT_EQ(group.frame.samples()[t] >> 8, group.mixed[t]);
}

TEST(Muxer, WithoutMetadataOnlyTheLayoutIsTold) {
    Group group = winner();
    ASSERT_TRUE(Muxer()(group));
    EXPECT_EQ(opcodes_of(group), (Opcodes{30}));
    EXPECT_EQ(group.record.instructions[0].arg2, 1u) << "5.0";
    EXPECT_TRUE(group.record.mix_seeds->empty());
    EXPECT_EQ(group.record.ixs, nullptr);
}

TEST(Muxer, TellsInstructionsInTheirOrder) {
    Group group = winner([](Group& g) {
        g.meta = 0x123;
        g.preset = 21;
        g.loudness = {api::loudness::Parameter::SpeechLoudness, 77};
        g.room_type = 3;
        g.orig_attn[api::ChannelVariant(api::channel::LeftSurround)] = 9;
        g.orig_attn[api::ChannelVariant(api::channel::Left)] = 5;
        g.version = Version{3, 2, 1};
        g.git_hash = 0xDCA34E54;
        g.scaler_ix = 4;
    });
    ASSERT_TRUE(Muxer()(group));
    EXPECT_EQ(opcodes_of(group), (Opcodes{30, 70, 71, 133, 80, 64, 64, 100, 110, 65}));
    const auto& list = group.record.instructions;
    EXPECT_EQ(list[5].arg2, 0u) << "attenuations by channel id";
    EXPECT_EQ(list[5].arg3, 5u);
    EXPECT_EQ(list[6].arg2, 4u);
    EXPECT_EQ(list[7].arg2, 0x030201u);
}

TEST(Muxer, WritesWhatItTells) {
    for (const bool native : {false, true}) {
        Group group = winner([](Group& g) {
            g.meta = 0xFEDCBA98;
            g.orig_attn[g.origs[0].key] = 7;
        });
        Muxer muxer;
        muxer.native_content = native;
        ASSERT_TRUE(muxer(group));
        const CarrierRecord record(group.frame.samples());
        EXPECT_EQ(record.nr_bitlines, 8u);
        EXPECT_EQ(record.native_content, native);
        EXPECT_FALSE(record.dither_enabled);
        EXPECT_EQ(record.channels, (std::vector<unsigned>{0}));
        EXPECT_EQ(record.instructions, (std::vector<CarrierRecord::Instruction>{
                                           {30, 1, 0}, {70, 0xFEDCBA98, 0}, {64, 0, 7}}));
    }
}

TEST(Muxer, TheBitsSetAsideAreEnoughToTheBit) {
    for (const auto& [bits, ok] : {std::pair(32u, true), std::pair(31u, false)}) {
        Group group = winner();
        group.budget.instruction_bits = bits;
        EXPECT_EQ(Muxer()(group), ok);
    }
}

TEST(Muxer, EachLoudnessParameterHasItsOpcode) {
    const unsigned opcodes[] = {128, 129, 133, 130, 131, 132};
    for (unsigned parameter = 0; parameter < 6; ++parameter) {
        Group group = winner();
        group.loudness = {api::loudness::Parameter(parameter), 9};
        group.budget.instruction_bits += 40;
        ASSERT_TRUE(Muxer()(group));
        EXPECT_EQ(opcodes_of(group), (Opcodes{30, opcodes[parameter]}));
    }
}

TEST(Muxer, RefusesMoreThanWasSetAside) {
    Group group = winner();
    group.preset = 1;
    EXPECT_FALSE(Muxer()(group));
}

TEST(Muxer, RefusesWhatARecordCannotSay) {
    const std::pair<const char*, void (*)(Group&)> cases[] = {
        {"room type 4", [](Group& g) { g.room_type = 4; }},
        {"no loudness",
         [](Group& g) {
             g.loudness = {api::loudness::Parameter::None, 0};
         }},
        {"no carrier", [](Group& g) { g.input_layout = api::SpeakerLayout(8); }},
        {"another carrier", [](Group& g) { g.output_layout = api::SpeakerLayout(4); }}};
    for (const auto& [name, set] : cases) {
        Group group = winner(set);
        EXPECT_FALSE(Muxer()(group)) << name;
    }
    Group cut = winner();
    cut.mixed.pop_back();
    EXPECT_FALSE(Muxer()(cut));
    Group odd = group_of(8, {music(250, 1)});
    Chain chain;
    ASSERT_EQ(chain(odd), Chain::Code::ok);
    EXPECT_FALSE(Muxer()(odd)) << "250 samples are no size of a block";
}

// A record could be written; its header has no width for what is left of the samples.
TEST(Muxer, RefusesMixesOfLessThanTenBits) {
    for (const auto& [nr_bitlines, ok] : {std::pair(14u, true), {15u, false}, {16u, false}}) {
        Group group = group_of(nr_bitlines, {music(256, 1)});
        Chain chain;
        ASSERT_EQ(chain(group), Chain::Code::ok);
        EXPECT_EQ(Muxer()(group), ok) << nr_bitlines;
    }
}

TEST(Muxer, KnowsEveryLayoutThatHasACarrier) {
    for (const auto& recipe : carrier_recipes()) {
        Group group = winner();
        group.input_layout = api::SpeakerLayout(recipe.input);
        group.output_layout = api::SpeakerLayout(recipe.carrier);
        EXPECT_TRUE(Muxer()(group)) << recipe.input;
        EXPECT_EQ(group.record.instructions[0].arg2, recipe.code);
    }
}

TEST(Muxer, HidesSeedsCentersAndIndicesOfAMix) {
    Group two = group_of(8, {music(256, 1), music(256, 2)});
    Group three = group_of(10, {music(256, 1), music(256, 2), music(256, 3)});
    for (Group* const group : {&two, &three}) {
        Chain chain;
        ASSERT_EQ(chain(*group), Chain::Code::ok);
        ASSERT_TRUE(group->fits);
        EXPECT_TRUE(Muxer()(*group));
        EXPECT_EQ(group->record.ixs, &group->ixs);
    }
    EXPECT_EQ(CarrierRecord(two.frame.samples()).opcodes()[0], 30u) << "behind two seeds";
    EXPECT_EQ(CarrierRecord(three.frame.samples()).opcodes()[0], 30u) << "behind five";
    EXPECT_EQ(two.record.centers_1d, &two.centers_1d);
    EXPECT_EQ(three.record.centers_2d, &three.centers_2d);
}

}  // namespace
}  // namespace vela::codec::v3::encode
