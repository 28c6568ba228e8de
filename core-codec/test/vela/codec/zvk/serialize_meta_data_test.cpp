#include <gtest/gtest.h>

#include <vela/codec/zvk/Text.hpp>
#include <vela/codec/zvk/serialize_meta_data.hpp>

namespace vela::codec::zvk {

using test::Text;

std::string written(const MetaData& header) {
    std::string out;
    unsigned left = 128;
    EXPECT_TRUE(serialize<Text>(out, left, header));
    EXPECT_EQ(left, 0u);
    return out;
}

struct Field {
    const char* name;
    std::size_t at;
    std::string bits;
    void (*set)(MetaData&);
};

// A fresh header is all zeros but for its four empty slots.
const Field fields[] = {
    {"frame_size_code", 0, "10000001", [](MetaData& m) { m.frame_size_code = 0x81; }},
    {"reserved_flag_a", 8, "1", [](MetaData& m) { m.reserved_flag_a = true; }},
    {"reserved_flag_b", 9, "1", [](MetaData& m) { m.reserved_flag_b = true; }},
    {"encoded_flag", 10, "1", [](MetaData& m) { m.encoded_flag = true; }},
    {"native_content", 11, "1", [](MetaData& m) { m.native_content = true; }},
    {"mix_bw_code", 12, "1011", [](MetaData& m) { m.mix_bw_code = 11; }},
    {"mix_bw_code, cut", 12, "0001", [](MetaData& m) { m.mix_bw_code = 17; }},
    {"version_major", 16, "10000001", [](MetaData& m) { m.version_major = 0x81; }},
    {"version_minor", 24, "10001010", [](MetaData& m) { m.version_minor = 0x8A; }},
    {"dither_enabled", 32, "1", [](MetaData& m) { m.dither_enabled = true; }},
    {"ix_coding_flag", 33, "1", [](MetaData& m) { m.ix_coding_flag = true; }},
    {"ix_coding_mode", 34, "10", [](MetaData& m) { m.ix_coding_mode = 2; }},
    {"rice_k", 36, "0111", [](MetaData& m) { m.rice_k = 7; }},
    {"error_center_ix", 40, "11000001", [](MetaData& m) { m.error_center_ix = 0xC1; }},
    {"nr_instruction_lists", 48, "00000001", [](MetaData& m) { m.nr_instruction_lists = 1; }},
    {"center_bits", 56, "00011000", [](MetaData& m) { m.center_bits = 24; }},
    {"channels[0]", 64, "00000000", [](MetaData& m) { m.channels[0] = api::channel::Left; }},
    {"channels[1]", 72, "00001001", [](MetaData& m) { m.channels[1] = api::channel::HeightLeft; }},
    {"channels[2]", 80, "00001100", [](MetaData& m) { m.channels[2] = api::channel::Top; }},
    {"channels[3]", 88, "00011000", [](MetaData& m) { m.channels[3] = api::channel::Ambisonics; }},
};

TEST(SerializeMetaData, EveryFieldHasItsPlace) {
    const std::string fresh = std::string(64, '0') + std::string(32, '1') + std::string(32, '0');
    EXPECT_EQ(written(MetaData()), fresh);
    for (const Field& field : fields) {
        SCOPED_TRACE(field.name);
        MetaData header;
        field.set(header);
        std::string expected = fresh;
        expected.replace(field.at, field.bits.size(), field.bits);
        EXPECT_EQ(written(header), expected);
    }
}

TEST(SerializeMetaData, AShortageFailsAtAnyField) {
    for (unsigned bits = 0; bits < 128; ++bits) {
        std::string out;
        unsigned left = bits;
        EXPECT_FALSE(serialize<Text>(out, left, MetaData()));
        EXPECT_LE(out.size(), bits);
    }
}

}  // namespace vela::codec::zvk
