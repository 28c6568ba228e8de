#include <gtest/gtest.h>

#include <vela/carrier/Instruction.hpp>

#include "support/Writer.hpp"

namespace vela::carrier {
namespace {

struct Field {
    std::uint64_t value;
    unsigned width;
};

BitReader reader_of(std::initializer_list<Field> fields) {
    support::Bits bits;
    for (const Field& field : fields)
        support::append(bits, field.value, field.width);
    return BitReader(bits);
}

TEST(Instructions, TakeTheWidthsOfTheirOpcodes) {
    BitReader bits = reader_of(
        {{1, 8},   {30, 8},          {70, 8}, {70, 8},  {0x89ABCDEF, 32}, {71, 8},  {21, 8},
         {80, 8},  {3, 8},           {64, 8}, {9, 8},   {240, 8},         {100, 8}, {0x30201, 24},
         {110, 8}, {0xDCA34E54, 32}, {65, 8}, {240, 8}, {0, 8},           {5, 3}});
    std::vector<Instruction> list;
    std::string why;
    ASSERT_TRUE(read_instructions(list, why, bits)) << why;
    const std::vector<Instruction> expected = {
        {30, {70}},     {70, {0x89ABCDEF}}, {71, {21}},          {80, {3}},
        {64, {9, 240}}, {100, {0x30201}},   {110, {0xDCA34E54}}, {65, {240}}};
    EXPECT_EQ(list, expected);
    EXPECT_EQ(bits.left(), 3u);
}

TEST(Instructions, MayBeNoneAtAll) {
    BitReader bits = reader_of({{1, 8}, {0, 8}});
    std::vector<Instruction> list = {{30, {1}}};
    std::string why;
    EXPECT_TRUE(read_instructions(list, why, bits));
    EXPECT_TRUE(list.empty());
}

TEST(Instructions, KnowTheRangeOfEachLoudnessCode) {
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> ranges = {
        {128, 330}, {129, 300}, {130, 50}, {131, 1000}, {132, 1000}, {133, 330}};
    for (const auto& [opcode, largest] : ranges) {
        SCOPED_TRACE(opcode);
        for (const std::uint32_t code : {largest, largest + 1}) {
            const bool ok = code == largest;
            for (const std::uint32_t word : {code << 22, 1u << 21 | code << 11, 1u << 10 | code}) {
                BitReader bits = reader_of({{1, 8}, {opcode, 8}, {word, 32}, {0, 8}});
                std::vector<Instruction> list;
                std::string why;
                EXPECT_EQ(read_instructions(list, why, bits), ok) << word << ": " << why;
            }
        }
    }
}

struct Refused {
    const char* name;
    std::vector<Field> fields;
    const char* why;
};

class RefusedInstructions : public testing::TestWithParam<Refused> {};

TEST_P(RefusedInstructions, AreRefusedWithTheirReason) {
    support::Bits bits;
    for (const Field& field : GetParam().fields)
        support::append(bits, field.value, field.width);
    BitReader reader(bits);
    std::vector<Instruction> list;
    std::string why;
    EXPECT_FALSE(read_instructions(list, why, reader));
    EXPECT_EQ(why, GetParam().why);
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedInstructions,
    testing::Values(Refused{"NoTag", {{1, 7}}, "the record ends before the instruction list"},
                    Refused{"Tag", {{2, 8}, {0, 8}}, "the instruction list has the unknown tag 2"},
                    Refused{"NoEnd",
                            {{1, 8}, {80, 8}, {0, 8}},
                            "the instruction list does not end within the record"},
                    Refused{"CutOperand",
                            {{1, 8}, {110, 8}, {0, 31}},
                            "the record ends within instruction 110"},
                    Refused{"Opcode66", {{1, 8}, {66, 8}, {0, 8}}, "opcode 66 is unknown"},
                    Refused{"Opcode255", {{1, 8}, {255, 8}, {0, 8}}, "opcode 255 is unknown"},
                    Refused{"RoomType",
                            {{1, 8}, {80, 8}, {4, 8}, {0, 8}},
                            "instruction 80 has the impossible operand 4"},
                    Refused{"GroupScalerZero",
                            {{1, 8}, {65, 8}, {0, 8}, {0, 8}},
                            "instruction 65 has the impossible operand 0"},
                    Refused{"GroupScalerBeyond",
                            {{1, 8}, {65, 8}, {241, 8}, {0, 8}},
                            "instruction 65 has the impossible operand 241"},
                    Refused{"AttenuationZero",
                            {{1, 8}, {64, 8}, {0, 8}, {0, 8}, {0, 8}},
                            "instruction 64 has the impossible operand 0"},
                    Refused{"AttenuatedNothing",
                            {{1, 8}, {64, 8}, {25, 8}, {9, 8}, {0, 8}},
                            "instruction 64 has the impossible operand 9"},
                    Refused{"GroupScaledTwice",
                            {{1, 8}, {65, 8}, {1, 8}, {65, 8}, {2, 8}, {0, 8}},
                            "instruction 65 stands twice for one target"},
                    Refused{"AttenuatedTwice",
                            {{1, 8}, {64, 8}, {2, 8}, {1, 8}, {64, 8}, {2, 8}, {1, 8}, {0, 8}},
                            "instruction 64 stands twice for one target"},
                    Refused{"AbsentLoudnessSet",
                            {{1, 8}, {128, 8}, {1, 32}, {0, 8}},
                            "instruction 128 has the impossible operand 1"}),
    [](const auto& param) { return param.param.name; });

}  // namespace
}  // namespace vela::carrier
