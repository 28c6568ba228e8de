#include <gtest/gtest.h>

#include <vela/dmol/Opcode.hpp>

namespace vela::dmol {

using api::loudness::Parameter;

struct Known {
    Opcode opcode;
    std::uint32_t number;
    Payload payload;
};

// The numbers and widths that a decoder expects.
const Known known[] = {
    {Opcode::End, 0, {0, 0}},
    {Opcode::InputLayout, 30, {8, 0}},
    {Opcode::ChannelAttenuation, 64, {8, 8}},
    {Opcode::GroupScaler, 65, {8, 0}},
    {Opcode::MetaGains, 70, {32, 0}},
    {Opcode::OrbimixPreset, 71, {8, 0}},
    {Opcode::RoomType, 80, {8, 0}},
    {Opcode::CodecVersion, 100, {24, 0}},
    {Opcode::BuildHash, 110, {32, 0}},
    {Opcode::ProgramLoudness, 128, {32, 0}},
    {Opcode::ProgramLoudnessRange, 129, {32, 0}},
    {Opcode::MaximumTruePeak, 130, {32, 0}},
    {Opcode::ShortTermLoudness, 131, {32, 0}},
    {Opcode::MomentaryLoudness, 132, {32, 0}},
    {Opcode::SpeechLoudness, 133, {32, 0}},
};

TEST(Opcode, NumbersAndWidths) {
    for (const Known& row : known) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(static_cast<std::uint32_t>(row.opcode), row.number);
        EXPECT_EQ(payload_of(row.opcode), row.payload);
    }
}

TEST(Opcode, OtherNumbersHaveNoPayload) {
    unsigned nr_known = 0;
    for (std::uint32_t number = 0; number < 1024; ++number)
        if (payload_of(static_cast<Opcode>(number))) ++nr_known;
    EXPECT_EQ(nr_known, std::size(known));
    for (const std::uint32_t number : {66u, 67u, 68u, 69u, 134u, 255u, 256u + 30u, 0xFFFFFFFFu})
        EXPECT_EQ(payload_of(static_cast<Opcode>(number)), std::nullopt) << number;
}

TEST(Opcode, SpeechLoudnessIsOutOfLine) {
    EXPECT_EQ(opcode_of(Parameter::ProgramLoudness), Opcode{128});
    EXPECT_EQ(opcode_of(Parameter::ProgramLoudnessRange), Opcode{129});
    EXPECT_EQ(opcode_of(Parameter::SpeechLoudness), Opcode{133});
    EXPECT_EQ(opcode_of(Parameter::MaximumTruePeak), Opcode{130});
    EXPECT_EQ(opcode_of(Parameter::ShortTermLoudness), Opcode{131});
    EXPECT_EQ(opcode_of(Parameter::MomentaryLoudness), Opcode{132});
}

TEST(Opcode, NoParameterHasNoOpcode) {
    EXPECT_EQ(opcode_of(Parameter::None), std::nullopt);
    EXPECT_EQ(opcode_of(static_cast<Parameter>(7)), std::nullopt);
}

}  // namespace vela::dmol
