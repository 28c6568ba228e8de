// What the encoder tells a decoder and when, read back from its carriers.

#include <functional>
#include <vela/CarrierRecipe.hpp>
#include <vela/codec/v3/lib/encoder/encoders.hpp>

namespace vela::codec::v3::encoder {
namespace {

using api::loudness::Parameter;
using encode::Frames;
using Opcodes = std::vector<unsigned>;
using Records = std::vector<CarrierRecord>;
using Before = std::function<void(IEncoder&, int frame)>;

/// Encodes frames of mono, 256 samples each.
Records records_of(IEncoder& encoder, int nr_frames, const Before& before) {
    Records records;
    Frames out;
    for (int frame = 0; frame < nr_frames; ++frame) {
        before(encoder, frame);
        EXPECT_TRUE(encoder.encode_one(out, frames_of(mono)));
        records.push_back(record_of(out, api::channel::Center));
    }
    return records;
}

Records records_of(int nr_frames, const Before& before) {
    return records_of(*make(mono, mono), nr_frames, before);
}

constexpr int not_sent = -1;

std::vector<int> sent(const Records& records, unsigned opcode) {
    std::vector<int> args;
    for (const auto& record : records) {
        const auto arg = record.arg2_of(opcode);
        args.push_back(arg ? static_cast<int>(*arg) : not_sent);
    }
    return args;
}

// A decoder that joins late waits at most a period; in the opening frames the parts come one after
// the other.  958 samples are four frames of 256.
TEST(EncoderMetadata, TheFixedCostIsSpreadOverTheOpeningFrames) {
    const auto records = records_of(8, [](IEncoder& encoder, int) {
        EXPECT_TRUE(encoder.set_orbimix_preset(21));
        EXPECT_TRUE(encoder.set_room_type(api::RoomType(2)));
    });
    const Opcodes expected[] = {{30, 70, 71, 80}, {30, 100}, {30, 110}, {30},
                                {30, 70, 71, 80}, {30, 100}, {30, 110}, {30}};
    for (std::size_t frame = 0; frame < records.size(); ++frame)
        EXPECT_EQ(records[frame].opcodes(), expected[frame]) << frame;
    EXPECT_EQ(records[0].arg2_of(71), 21u);
    EXPECT_EQ(records[0].arg2_of(80), 2u);
    EXPECT_EQ(records[1].arg2_of(100), 0x030201u);
    EXPECT_EQ(records[2].arg2_of(110), 0xDCA34E54u);
}

TEST(EncoderMetadata, WithoutASampleRateNothingHasAPeriod) {
    std::shared_ptr<IEncoder> encoder;
    ASSERT_TRUE(create(encoder, api::SpeakerLayout(mono), api::SpeakerLayout(mono), 0));
    ASSERT_TRUE(encoder->set_option("bitline.min", 8) && encoder->set_option("bitline.max", 8));
    const auto records =
        records_of(*encoder, 3, [](IEncoder& e, int) { EXPECT_TRUE(e.set_orbimix_preset(1)); });
    for (const auto& record : records)
        EXPECT_EQ(record.opcodes(), (Opcodes{30}));
}

TEST(EncoderMetadata, NoPresetIsToldAs255) {
    const auto records =
        records_of(2, [](IEncoder& encoder, int) { EXPECT_TRUE(encoder.set_orbimix_preset(-1)); });
    EXPECT_EQ(sent(records, 71), (std::vector<int>{255, not_sent}));
}

TEST(EncoderMetadata, TheMetaWordIsSentOnChangeAndEveryPeriod) {
    const auto steady = records_of(9, [](IEncoder& encoder, int) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.5f));
    });
    EXPECT_EQ(sent(steady, 70), (std::vector<int>{0x20, -1, -1, -1, 0x20, -1, -1, -1, 0x20}));

    const auto changed = records_of(8, [](IEncoder& encoder, int frame) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, frame < 2 ? 1.5f : 2.0f));
    });
    EXPECT_EQ(sent(changed, 70), (std::vector<int>{0x20, -1, 0x40, -1, -1, -1, 0x40, -1}));
}

TEST(EncoderMetadata, AFrameWithoutAMetaCallSendsZeroAsAChange) {
    const auto records = records_of(3, [](IEncoder& encoder, int frame) {
        if (frame == 0) {
            EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.5f));
        }
    });
    EXPECT_EQ(sent(records, 70), (std::vector<int>{0x20, 0, -1}));
}

TEST(EncoderMetadata, MetaCallsWithinOneFrameAddUpBitByBit) {
    const auto records = records_of(1, [](IEncoder& encoder, int) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.5f));  // code 2
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.2f));  // code 1
        EXPECT_TRUE(encoder.set_meta(api::channel::Left, 4.0f)) << "not in the carrier: ignored";
    });
    EXPECT_EQ(sent(records, 70), (std::vector<int>{0x30}));
}

TEST(EncoderMetadata, GainsBelowOneAreToldAsTheLastCode) {
    const auto records = records_of(1, [](IEncoder& encoder, int) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 0.5f));
    });
    EXPECT_EQ(sent(records, 70), (std::vector<int>{0xF0}));
}

void update(IEncoder& encoder, Parameter parameter, unsigned dimension, double data) {
    api::loudness::Value value;
    value.set_parameter(parameter);
    value.set_dimension(dimension);
    value.set_data(data);
    EXPECT_TRUE(encoder.update_loudness(value));
}

void update_all(IEncoder& encoder) {
    for (const auto& [parameter, data] : {std::pair(Parameter::ProgramLoudness, -23.0),
                                          {Parameter::ProgramLoudnessRange, 5.0},
                                          {Parameter::SpeechLoudness, -23.0},
                                          {Parameter::MaximumTruePeak, -0.5},
                                          {Parameter::ShortTermLoudness, -20.0},
                                          {Parameter::MomentaryLoudness, -20.0}})
        update(encoder, parameter, 3, data);
}

/// The loudness opcode of each frame, 0 for none.  At most one is allowed.
Opcodes loudness_opcodes(const Records& records) {
    Opcodes found;
    for (const auto& record : records) {
        const auto is_loudness = [](unsigned opcode) { return opcode >= 128; };
        const auto opcodes = record.opcodes();
        EXPECT_LE(std::ranges::count_if(opcodes, is_loudness), 1);
        const auto at = std::ranges::find_if(opcodes, is_loudness);
        found.push_back(at == opcodes.end() ? 0 : *at);
    }
    return found;
}

TEST(EncoderLoudness, OneItemAFrameTheQuickOnesFirst) {
    const auto once = records_of(10, [](IEncoder& encoder, int frame) {
        if (frame == 0) update_all(encoder);
    });
    EXPECT_EQ(loudness_opcodes(once), (Opcodes{132, 131, 128, 129, 133, 130, 128, 129, 133, 130}))
        << "the values of the moment go once, the others every 958 samples";

    const auto always = records_of(4, [](IEncoder& encoder, int) { update_all(encoder); });
    EXPECT_EQ(loudness_opcodes(always), (Opcodes{132, 132, 132, 132}))
        << "83 samples are over in the next frame";
}

TEST(EncoderLoudness, ReturnsInTheFirstFrameThatStartsAfterItsPeriod) {
    const Before program = [](IEncoder& encoder, int) {
        update(encoder, Parameter::ProgramLoudness, 3, -23.0);
    };
    // 0.9583 of it, cut, are 1023 and 1024 samples.
    EXPECT_EQ(loudness_opcodes(records_of(*make(mono, mono, 8, 8, 0, 1068), 6, program)),
              (Opcodes{128, 0, 0, 0, 128, 0}));
    EXPECT_EQ(loudness_opcodes(records_of(*make(mono, mono, 8, 8, 0, 1069), 6, program)),
              (Opcodes{128, 0, 0, 0, 0, 128}));
    // 312 samples: not in the frame at 256.
    const auto short_term = records_of(
        4, [](IEncoder& encoder, int) { update(encoder, Parameter::ShortTermLoudness, 3, -20.0); });
    EXPECT_EQ(loudness_opcodes(short_term), (Opcodes{131, 0, 131, 0}));
}

TEST(EncoderLoudness, WithoutValuesNothingIsTold) {
    EXPECT_EQ(loudness_opcodes(records_of(3, [](IEncoder&, int) {})), (Opcodes{0, 0, 0}));
    const auto incomplete = records_of(2, [](IEncoder& encoder, int) {
        for (const unsigned dimension : {0u, 1u, 2u})
            update(encoder, Parameter::ProgramLoudness, dimension, -23.0);
    });
    EXPECT_EQ(loudness_opcodes(incomplete), (Opcodes{0, 0})) << "the third dimension is the value";
}

TEST(EncoderLoudness, TheDimensionsAreToldFromTheThirdDown) {
    const auto records = records_of(1, [](IEncoder& encoder, int) {
        update(encoder, Parameter::ProgramLoudness, 0, -30.0);  // not sent
        update(encoder, Parameter::ProgramLoudness, 1, -25.0);
        update(encoder, Parameter::ProgramLoudness, 2, -24.0);
        update(encoder, Parameter::ProgramLoudness, 3, -23.0);
    });
    EXPECT_EQ(records[0].arg2_of(128), 120u << 22 | 1u << 21 | 110u << 11 | 1u << 10 | 100u);
}

TEST(EncoderLoudness, ValuesOfTheMomentAreUsedUpWithAllTheirDimensions) {
    for (const auto& [parameter, opcode, kept] :
         {std::tuple(Parameter::MomentaryLoudness, 132u, false),
          std::tuple(Parameter::ShortTermLoudness, 131u, false),
          std::tuple(Parameter::MaximumTruePeak, 130u, true)}) {
        const auto records = records_of(6, [what = parameter](IEncoder& encoder, int frame) {
            if (frame == 0) update(encoder, what, 2, -0.5);
            if (frame == 0 || frame == 4) update(encoder, what, 3, -0.5);
        });
        const auto first = records[0].arg2_of(opcode).value();
        EXPECT_NE(first & 1u << 21, 0u);
        EXPECT_EQ(records[4].arg2_of(opcode), kept ? first : first & 0xFFC00000);
    }
}

TEST(EncoderLoudness, AValueThatNoCodeCanTellFailsTheFrame) {
    const auto encoder = make(mono, mono);
    update(*encoder, Parameter::ProgramLoudness, 3, -1.9);
    Frames out;
    EXPECT_FALSE(encoder->encode_one(out, frames_of(mono)));
}

TEST(EncoderMetadata, EveryGroupTellsTheAttenuationsOfItsMembers) {
    const auto encoder = make(lcr, stereo);
    ASSERT_TRUE(encoder->set_attn(api::ChannelVariant(api::channel::Center), 2.0f));
    ASSERT_TRUE(encoder->set_attn(api::ChannelVariant(api::channel::Right), 16.0f));
    Frames out;
    ASSERT_TRUE(encoder->encode_one(out, frames_of(lcr)));
    using Instructions = std::vector<CarrierRecord::Instruction>;
    EXPECT_EQ(record_of(out, api::channel::Left).instructions,
              (Instructions{{30, 66, 0}, {64, 2, 60}}));
    EXPECT_EQ(record_of(out, api::channel::Right).instructions,
              (Instructions{{30, 66, 0}, {70, 0, 0}, {64, 1, 240}, {64, 2, 60}}));
}

TEST(EncoderMetadata, TheHeaderTellsTheSettings) {
    for (const bool set : {false, true}) {
        const auto encoder = make(mono, mono);
        ASSERT_TRUE(encoder->set_option("native_content", set));
        ASSERT_TRUE(encoder->set_option("dither.enabled", set));
        const auto record = records_of(*encoder, 1, [](IEncoder&, int) {})[0];
        EXPECT_EQ(record.native_content, set);
        EXPECT_EQ(record.dither_enabled, set);
    }
}

// Which channel of a carrier tells the metadata, by carrier mask; typed once more.
const std::map<std::uint32_t, unsigned> metadata_channels{{4, 2},  {3, 1},  {11, 3},  {51, 5},
                                                          {55, 2}, {63, 3}, {439, 8}, {447, 3}};

TEST(EncoderMetadata, EveryLayoutTellsItsMembersAndOneChannelTheRest) {
    for (const CarrierRecipe& recipe : carrier_recipes()) {
        SCOPED_TRACE(recipe.input);
        const auto encoder = make(recipe.input, recipe.carrier, 12, 12);
        ASSERT_TRUE(encoder->set_option("gvm.centers_max", 8));
        Frames out;
        ASSERT_TRUE(encoder->encode_one(out, frames_of(recipe.input)));
        ASSERT_EQ(out.size(), recipe.groups.size());
        for (const auto& group : recipe.groups) {
            const auto record = record_of(out, api::Channel::create(group.carrier));
            const auto members = group.active_members();
            EXPECT_EQ(record.channels, std::vector<unsigned>(members.begin(), members.end()));
            EXPECT_EQ(record.arg2_of(30), recipe.code);
            EXPECT_EQ(record.arg2_of(70).has_value(),
                      metadata_channels.at(recipe.carrier) == group.carrier);
        }
    }
}

}  // namespace
}  // namespace vela::codec::v3::encoder
