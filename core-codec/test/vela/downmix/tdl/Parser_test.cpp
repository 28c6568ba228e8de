#include <gtest/gtest.h>

#include <random>
#include <vela/downmix/tdl/Parser.hpp>

#include "dump.hpp"

namespace vela::downmix::tdl {

namespace {

struct Good {
    const char* text;
    const char* stored;
};

class ParserStores : public testing::TestWithParam<Good> {};
class ParserRefuses : public testing::TestWithParam<const char*> {};

// Bits of the dimension sets: 1 is 2, 2 is 4, 3 is 8.
constexpr Good structure[] = {
    {"", ""},
    {"\n\n", ""},
    {"\r\n", ""},
    {"# comment", ""},
    {"#\n#x\n0 RoomType 1\n", "room_type 0 1\n"},
    {"0 RoomType 1", "room_type 0 1\n"},
    {"0 RoomType 1\r\n5 RoomType 2\r\n", "room_type 0 1\nroom_type 5 2\n"},
    {"0 RoomType 1\r", "room_type 0 1\n"},
    {"9 RoomType 2\n3 RoomType 1\n", "room_type 3 1\nroom_type 9 2\n"},
    {" \t 0 \t RoomType \t 1 \t", "room_type 0 1\n"},
    {"007 RoomType 1", "room_type 7 1\n"},
    {"0 RoomType 1\n0 RoomType 3\n", "room_type 0 3\n"},
};

constexpr Good kinds[] = {
    {"0 META 5 -3.0", "meta 0 5 -3\n"},
    {"0 META 77 1e1", "meta 0 77 10\n"},
    {"0 META 1 2\n0 META 0 3\n0 META 1 4", "meta 0 0 3\nmeta 0 1 4\n"},
    {"0 ATTN 3 6.0", "attn 0 3 6\n"},
    {"0 ATTN 5 -1.5 trailing words", "attn 0 5 -1.5\n"},
    {"0 ATTN 24 +.5dB", "attn 0 24 0.5\n"},
    {"0 ATTN 3 1\n0 ATTN 2 4\n0 ATTN 3 2\n", "attn 0 2 4\nattn 0 3 2\n"},
    {"0 Orbimix_Preset 1 5", "orbimix_preset 0 21\n"},
    {"0 Orbimix_Preset1 5", "orbimix_preset 0 21\n"},
    {"0 Orbimix_Preset 0 0", "orbimix_preset 0 0\n"},
    {"0 Orbimix_Preset 15 15", "orbimix_preset 0 255\n"},
    {"10 ResetDownmix", "gains 10 -\ndisabled 10 -\n"},
    {"10 ResetDownmix or anything", "gains 10 -\ndisabled 10 -\n"},
    {"10 Disable(Center) 1\n10 ResetDownmix", "gains 10 -\ndisabled 10 1 32\n"},
    {"10 Center(1) 1 (1)\n10 ResetDownmix", "gains 10 1 5 2 1\ndisabled 10 -\n"},
    {"0 DefaultGain 0 Mute", "default_gains 0 0 -144\n"},
    {"0 DefaultGain 1 mute", "default_gains 0 1 -144\n"},
    {"0 DefaultGain 2 -4.5", "default_gains 0 2 -4.5\n"},
    {"7 ResetDefaultGains", "default_gains 7 -\n"},
    {"7 DefaultGain 2 1\n7 ResetDefaultGains", "default_gains 7 2 1\n"},
    {"0 RoomType 0", "room_type 0 0\n"},
    {"0 RoomType 3", "room_type 0 3\n"},
};

constexpr Good loudness[] = {
    {"0 ProgramLoudness(1,2) -23.0", "loudness 0 0 1 -23\nloudness 0 0 2 -23\n"},
    {"0 ProgramLoudnessRange(2) 5.5", "loudness 0 1 2 5.5\n"},
    {"0 SpeechLoudness(3) -24", "loudness 0 2 3 -24\n"},
    {"0 MaximumTruePeak(1) -1.0", "loudness 0 3 1 -1\n"},
    {"0 ShortTermLoudness(3)-30.57", "loudness 0 4 3 -30.5\n"},
    {"0 MomentaryLoudness(3) -22.5", "loudness 0 5 3 -22.5\n"},
    {"0 SpeechLoudness(3,1,1 2) -9", "loudness 0 2 1 -9\nloudness 0 2 2 -9\nloudness 0 2 3 -9\n"},
    {"0 SpeechLoudness( 3, 1,) -9", "loudness 0 2 1 -9\nloudness 0 2 3 -9\n"},
    {"0 SpeechLoudness() -9", ""},
    {"5 SpeechLoudness(3) -9\n5 SpeechLoudness(3) -8", "loudness 5 2 3 -9\nloudness 5 2 3 -8\n"},
};

constexpr Good movements[] = {
    {"0 Surrounds(1,2) 4 (1.0, 0.7)", "gains 0 4 2 6 1 0.7\n"},
    {"0 Surrounds() 4 (1.0)", "gains 0 4 2 0 1\n"},
    {"0 Trio(3) 24 ()", "gains 0 24 14 8\n"},
    {"0 Trio(3) 0 (0)", "gains 0 0 14 8 0\n"},
    {"0 Trio(3) 0 (1 2,3, \t 4, )", "gains 0 0 14 8 1 2 3 4\n"},
    {"0 Backs(1) 1 (1)\n0 Backs(1) 1 (2)\n0 Backs(2) 1 (3)", "gains 0 1 4 2 2\ngains 0 1 4 4 3\n"},
    {"0 Disable(Corners, Trio) 4", "disabled 0 4 16385\n"},
    {"0 Disable(CornersTrio,Backs) 4", "disabled 0 4 16401\n"},
    {"0 Disable() 4", "disabled 0 4 0\n"},
    {"0 Disable(Left, nothing known, Right) 4", "disabled 0 4 1024\n"},
    {"0 Disable( Left) 4", "disabled 0 4 0\n"},
    {"0 Disable(Left(Right)) 4", "disabled 0 4 1024\n"},
    {"0 Disable(LFEFronts) 2", "disabled 0 2 4104\n"},
    {"0 Disable(Left) 4 trailing", "disabled 0 4 1024\n"},
    {"0 Disable(Left) L_1", "disabled 0 0_1 1024\n"},
    {"0 Disable(Left) l", "disabled 0 0 1024\n"},
    {"0 Disable(Left) LeftSurround_12 trailing", "disabled 0 4_12 1024\n"},
    {"0 Disable(Left) ambi_V", "disabled 0 24_8 1024\n"},
};

// Numbers that no file should have: nothing is tested beyond what the lines promise.
constexpr Good odd_numbers[] = {
    {"-1 RoomType 1", "room_type 18446744073709551615 1\n"},
    {"99999999999999999999 RoomType 1", "room_type 9223372036854775807 1\n"},
    {"0 RoomType 4294967297", "room_type 0 1\n"},
    {"0 META -1 1", "meta 0 4294967295 1\n"},
    {"0 META 0 inf", "meta 0 0 inf\n"},
    {"0 META 0 -1e300", "meta 0 0 -inf\n"},
    {"0 META 0 nan", "meta 0 0 nan\n"},
    {"0 META 0 1e-300", "meta 0 0 0\n"},
    {"0 META 0 0x10", "meta 0 0 16\n"},
    {"0 ATTN 4294967299 1", "attn 0 3 1\n"},
    {"0 ATTN 3 1234567890123456789012345678901234567890", "attn 0 3 1.23457e+29\n"},
    {"0 SpeechLoudness(3) 1e300", "loudness 0 2 3 -2.14748e+08\n"},
    {"0 SpeechLoudness(3) nan", "loudness 0 2 3 -2.14748e+08\n"},
    {"0 Trio(1) 0 (inf, -0)", "gains 0 0 14 2 inf -0\n"},
};

constexpr const char* malformed[] = {
    // No sample index, or no blank behind it.
    " ", "\t\t", " # comment", "RoomType 1", "x RoomType 1", "0", "0RoomType 1", "0x1 RoomType 1",
    "1234567890123456789012345678901234567890 RoomType 1",
    // No keyword that is known.
    "0 ", "0 Room 1", "0 roomtype 1", "0 LeftHeight(1) 0 (1)", "0 # comment",
    // Values that are missing, or not set off by a blank.
    "0 META", "0 META 1", "0 META 1 ", "0 META x 1", "0 META 1 x", "0 METAL 1 1", "0 META1 1",
    "0 ATTN", "0 ATTN 1", "0 ATTN 1 x", "0 ATTN1 1", "0 ATTN 1dB", "0 Orbimix_Preset",
    "0 Orbimix_Preset 1", "0 Orbimix_Preset 1,1", "0 Orbimix_Preset 1 x", "0 DefaultGain",
    "0 DefaultGain 1", "0 DefaultGain 1Mute", "0 DefaultGain 1 MUTE", "0 DefaultGains 1 1",
    "0 RoomType", "0 RoomType1", "0 RoomType x", "0 SpeechLoudness(1)", "0 SpeechLoudness(1) x",
    "0 Disable(Left)", "0 Disable(Left) ", "0 Disable(Left)4", "0 Trio(1)", "0 Trio(1) 0",
    "0 Trio(1) 0(1)", "0 Trio(1)0 (1)",
    // Numbers out of range.
    "0 Orbimix_Preset 16 0", "0 Orbimix_Preset 0 16", "0 Orbimix_Preset -1 0",
    "0 Orbimix_Preset 0 -1", "0 RoomType 4", "0 RoomType -1", "0 SpeechLoudness(0) -9",
    "0 SpeechLoudness(4) -9", "0 SpeechLoudness(1,-2) -9", "0 SpeechLoudness(12) -9",
    "0 Trio(4) 0 (1)",
    // Channels: a name only where nothing follows, an id of the table.
    "0 ATTN LFE 6.0", "0 ATTN L_0 6.0", "0 ATTN 25 1", "0 ATTN -1 1", "0 DefaultGain L 1",
    "0 Trio(1) L (1)", "0 Trio(1) 25 (1)", "0 Disable(Left) L 4", "0 Disable(Left) Lx",
    "0 Disable(Left) 25", "0 Disable(Left) ambi", "0 Disable(Left) ambi_Q",
    // Brackets.
    "0 ProgramLoudness (1) -23", "0 SpeechLoudness -23", "0 SpeechLoudness(1 -23",
    "0 SpeechLoudness(1", "0 SpeechLoudness(1;2) -23", "0 SpeechLoudness(,1) -23",
    "0 SpeechLoudness(1 ) -23", "0 SpeechLoudness(1)\n -23", "0 SpeechLoudness((1)) -23",
    "0 Disable (Left) 4", "0 Disable Left 4", "0 Disable(Left 4", "0 Disable(Left(Right) 4",
    "0 Trio (1) 0 (1)", "0 Trio 0 (1)", "0 Trio(1 0 (1)", "0 Trio(1) 0 1", "0 Trio(1) 0 (1",
    "0 Trio(1) 0 (1\n)", "0 LFEFronts(1) 0 (1)",
    // Gains that are none.
    "0 Trio(1) 0 (-1)", "0 Trio(1) 0 (1, -0.1)", "0 Trio(1) 0 (x)", "0 Trio(1) 0 (1 x)",
    "0 Trio(1) 0 (,1)", "0 Trio(1) 0 (1,,1)", "0 Trio(1) 0 (Mute)", "0 Trio(1) 0 (nan)",
    "0 Trio(1) 0 (-inf)", "0 Trio(1) 0 (1 , 2)", "0 Trio(1) 0 ( )"};

}  // namespace

TEST_P(ParserStores, WhatTheLinesSay) {
    Parser parser;
    ASSERT_TRUE(parser.parse(GetParam().text)) << GetParam().text;
    EXPECT_EQ(Dump::of(parser), GetParam().stored) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Structure, ParserStores, testing::ValuesIn(structure));
INSTANTIATE_TEST_SUITE_P(Kinds, ParserStores, testing::ValuesIn(kinds));
INSTANTIATE_TEST_SUITE_P(Loudness, ParserStores, testing::ValuesIn(loudness));
INSTANTIATE_TEST_SUITE_P(Movements, ParserStores, testing::ValuesIn(movements));
INSTANTIATE_TEST_SUITE_P(OddNumbers, ParserStores, testing::ValuesIn(odd_numbers));

TEST_P(ParserRefuses, TheLineAndAllBehindIt) {
    Parser parser;
    const std::string text = std::string("1 RoomType 1\n") + GetParam() + "\n2 RoomType 2\n";
    EXPECT_FALSE(parser.parse(text)) << GetParam();
    EXPECT_EQ(Dump::of(parser), "room_type 1 1\n") << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Lines, ParserRefuses, testing::ValuesIn(malformed));

struct MovementCase {
    const char* keyword;
    unsigned value;
};

class ParserMovement : public testing::TestWithParam<MovementCase> {};

TEST_P(ParserMovement, HasItsKeyword) {
    const auto& [keyword, value] = GetParam();
    Parser parser;
    ASSERT_TRUE(parser.parse("0 Disable(" + std::string(keyword) + ") 0\n" +  //
                             "0 " + keyword + "(2) 0 (0.5)\n"));
    EXPECT_EQ(Dump::of(parser), "gains 0 0 " + std::to_string(value) + " 4 0.5\n" +
                                    "disabled 0 0 " + std::to_string(1u << value) + "\n");
}

INSTANTIATE_TEST_SUITE_P(Keywords, ParserMovement,
                         testing::Values(MovementCase{"Corners", 0},
                                         MovementCase{"CenterSurround", 1},
                                         MovementCase{"Surrounds", 2}, MovementCase{"Fronts", 3},
                                         MovementCase{"Backs", 4}, MovementCase{"Center", 5},
                                         MovementCase{"LeftBack", 6}, MovementCase{"RightBack", 7},
                                         MovementCase{"LeftSurround", 8},
                                         MovementCase{"RightSurround", 9}, MovementCase{"Left", 10},
                                         MovementCase{"Right", 11}, MovementCase{"LFE", 12},
                                         MovementCase{"Trio", 14}),
                         [](const auto& of) { return std::string(of.param.keyword); });

TEST(Parser, ReadsAFileOfEveryKind) {
    Parser parser;
    ASSERT_TRUE(
        parser.parse("# a line of every kind\n"
                     "0 RoomType 2\n"
                     "0 Orbimix_Preset 1 5\n"
                     "0 ATTN 0 3.0\n"
                     "0 META 4 3.0\n"
                     "0 ProgramLoudness(1,2,3) -23.0\n"
                     "0 MaximumTruePeak(3) -1.0\n"
                     "700 ShortTermLoudness(3) -30.5\n"
                     "1500 MomentaryLoudness(3) -22.5\n"
                     "1500 SpeechLoudness(2,3) -24.5\n"
                     "0 DefaultGain 0 Mute\n"
                     "0 Surrounds(1,2) 4 (1.0, 0.7)\n"
                     "0 Disable(LFEFronts) L_1\n"
                     "2000 ResetDownmix\n"
                     "2000 ResetDefaultGains\n"
                     "2000 ATTN 2 6.0\n"
                     "2500 META 0 3.0\n"
                     "2900 RoomType 3\n"));
    EXPECT_EQ(Dump::of(parser),
              "attn 0 0 3\n"
              "attn 2000 2 6\n"
              "meta 0 4 3\n"
              "meta 2500 0 3\n"
              "gains 0 4 2 6 1 0.7\n"
              "gains 2000 -\n"
              "disabled 0 0_1 4104\n"
              "disabled 2000 -\n"
              "loudness 0 0 1 -23\n"
              "loudness 0 0 2 -23\n"
              "loudness 0 0 3 -23\n"
              "loudness 0 3 3 -1\n"
              "loudness 700 4 3 -30.5\n"
              "loudness 1500 5 3 -22.5\n"
              "loudness 1500 2 2 -24.5\n"
              "loudness 1500 2 3 -24.5\n"
              "default_gains 0 0 -144\n"
              "default_gains 2000 -\n"
              "orbimix_preset 0 21\n"
              "room_type 0 2\n"
              "room_type 2900 3\n");
}

TEST(Parser, ReadsAnAuthorsNotes) {
    Parser parser;
    ASSERT_TRUE(
        parser.parse("# mix notes\n"
                     "0 RoomType 2\n"
                     "0 Orbimix_Preset 1 5\n"
                     "0 ATTN 3 -6.0\n"
                     "0 META 5 -3.0\n"
                     "0 ProgramLoudness(1,2) -23.0\n"
                     "0 MaximumTruePeak(1) -1.0\n"
                     "0 DefaultGain 0 Mute\n"
                     "0 Surrounds(1,2) 4 (1.0, 0.7)\n"
                     "0 Disable(Corners, Trio) 4\n"
                     "48000 ResetDownmix\n"
                     "48000 ATTN 3 -3.0\n"));
    EXPECT_EQ(Dump::of(parser),
              "attn 0 3 -6\n"
              "attn 48000 3 -3\n"
              "meta 0 5 -3\n"
              "gains 0 4 2 6 1 0.7\n"
              "gains 48000 -\n"
              "disabled 0 4 16385\n"
              "disabled 48000 -\n"
              "loudness 0 0 1 -23\n"
              "loudness 0 0 2 -23\n"
              "loudness 0 3 1 -1\n"
              "default_gains 0 0 -144\n"
              "orbimix_preset 0 21\n"
              "room_type 0 2\n");
}

// Only a line feed takes the carriage return ahead of it along.
TEST(Parser, KeepsACarriageReturnAtTheEndOfTheFile) {
    Parser parser;
    EXPECT_FALSE(parser.parse("0 Disable(Left) L\r"));
    EXPECT_TRUE(parser.parse("0 Disable(Left) L\r\n"));
    EXPECT_FALSE(parser.parse("0 RoomType 1\r\n\r"));
}

TEST(Parser, ForgetsTheFileBefore) {
    Parser parser;
    ASSERT_TRUE(parser.parse("0 RoomType 2\n0 ATTN 1 2\n0 Trio() 0 ()\n0 Disable() 0"));
    ASSERT_TRUE(parser.parse("5 RoomType 1\n"));
    EXPECT_EQ(Dump::of(parser), "room_type 5 1\n");
    parser.clear();
    EXPECT_EQ(Dump::of(parser), "");
}

// Read as a float, 23.3 would lie just below and be cut to 23.2.
TEST(Parser, LoudnessKeepsItsTenths) {
    Parser parser;
    ASSERT_TRUE(parser.parse("0 ProgramLoudness(3) -23.3\n"));
    EXPECT_EQ(parser.loudness.at(0).front().data(), -23.3);
}

}  // namespace vela::downmix::tdl
