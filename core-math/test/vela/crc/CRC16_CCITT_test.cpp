#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>
#include <vela/crc/CRC16_CCITT.hpp>

namespace vela::crc {
namespace {

using CRC = CRC16_CCITT<unsigned short>;

constexpr unsigned short crc_of(std::string_view text) {
    CRC crc;
    for (const char c : text)
        crc.add(static_cast<std::uint8_t>(c));
    return crc.value();
}

// The same division, bit by bit.
unsigned short crc_bit_by_bit(const std::vector<std::uint8_t>& bytes) {
    unsigned state = 0;
    for (const unsigned byte : bytes)
        for (unsigned bit = 0x80; bit != 0; bit >>= 1) {
            const bool top = (state & 0x8000u) != 0;
            const bool in = (byte & bit) != 0;
            state = (state << 1 & 0xFFFFu) ^ (top != in ? 0x1021u : 0u);
        }
    return static_cast<unsigned short>(state ^ 0xFFFFu);
}

TEST(CRC16_CCITT, GivesThePublishedCheckValue) {
    static_assert(crc_of("123456789") == 0xCE3C);
    EXPECT_EQ(crc_of("123456789"), 0xCE3C);
}

TEST(CRC16_CCITT, OfNothingIsTheComplementOfZero) {
    EXPECT_EQ(CRC().value(), 0xFFFF);
    EXPECT_EQ(crc_of(std::string_view("\0\0\0", 3)), 0xFFFF);
}

TEST(CRC16_CCITT, EachByteAgreesWithTheDivision) {
    for (int i = 0; i < 256; ++i) {
        const auto byte = static_cast<std::uint8_t>(i);
        CRC crc;
        crc.add(byte);
        ASSERT_EQ(crc.value(), crc_bit_by_bit({byte})) << i;
    }
}

template <std::size_t count>
void expect_as_one_by_one() {
    CRC16_CCITT<unsigned short> one, several;
    std::uint8_t next = 1;
    for (int round = 0; round < 100; ++round) {
        std::array<std::uint8_t, count> bytes;
        for (std::uint8_t& byte : bytes) {
            byte = next = static_cast<std::uint8_t>(next * 167 + 13);
            one.add(byte);
        }
        several.add(bytes);
        ASSERT_EQ(several.value(), one.value()) << count << " bytes, round " << round;
    }
}

TEST(CRC16_CCITT, SeveralBytesAtOnceAreTheSameAsOneByOne) {
    expect_as_one_by_one<2>();
    expect_as_one_by_one<3>();
    expect_as_one_by_one<7>();
    expect_as_one_by_one<12>();
}

TEST(CRC16_CCITT, AgreesWithTheDivisionAfterEachByteOfALongText) {
    std::mt19937 engine(1);
    std::vector<std::uint8_t> bytes;
    CRC crc;
    for (int i = 0; i < 500; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(engine()));
        crc.add(bytes.back());
        ASSERT_EQ(crc.value(), crc_bit_by_bit(bytes));
    }
}

TEST(CRC16_CCITT, AnyWrongBitShows) {
    const std::vector<std::uint8_t> bytes{1, 2, 3, 250};
    const auto good = crc_bit_by_bit(bytes);
    for (std::size_t i = 0; i < 8 * bytes.size(); ++i) {
        CRC crc;
        for (std::size_t k = 0; k < bytes.size(); ++k)
            crc.add(static_cast<std::uint8_t>(bytes[k] ^ (k == i / 8 ? 1u << i % 8 : 0u)));
        EXPECT_NE(crc.value(), good) << i;
    }
}

}  // namespace
}  // namespace vela::crc
