#include <gtest/gtest.h>

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

TEST(CRC16_CCITT, ThreeBytesAtOnceAreThreeBytes) {
    std::mt19937 engine(2);
    CRC one, three;
    for (int i = 0; i < 100000; ++i) {
        const auto bits = static_cast<std::uint32_t>(engine());
        const auto byte = [=](int ix) { return static_cast<std::uint8_t>(bits >> 8 * ix); };
        for (int ix = 0; ix < 3; ++ix)
            one.add(byte(ix));
        three.add(byte(0), byte(1), byte(2));
        ASSERT_EQ(three.value(), one.value());
    }
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
