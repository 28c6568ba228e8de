#include <gtest/gtest.h>

#include <random>
#include <vela/carrier/checksum.hpp>

#include "support/Writer.hpp"

namespace vela::carrier {
namespace {

TEST(Checksum, HasThePublishedCheckValue) {
    const std::vector<std::uint8_t> digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc_of_bytes(digits), 0xCE3C);
}

TEST(Checksum, LeavesOutItsOwnLineAlone) {
    std::vector<int> samples(32, 0);
    const std::uint16_t of_silence = crc_of_block(samples);
    samples[15] = 2;
    EXPECT_EQ(crc_of_block(samples), of_silence);
    samples[15] = 1;
    EXPECT_NE(crc_of_block(samples), of_silence);
    samples[15] = 0;
    samples[16] = 2;
    EXPECT_NE(crc_of_block(samples), of_silence);
}

TEST(Checksum, LeavesOutTheSignExtension) {
    std::vector<int> wide(16, -5);
    std::vector<int> narrow(16, -5 & 0xFFFFFF);
    EXPECT_EQ(crc_of_block(wide), crc_of_block(narrow));
}

TEST(Checksum, EqualsTheRemainderOfALongDivision) {
    std::mt19937 engine(1);
    std::uniform_int_distribution<int> draw(-0x800000, 0x7FFFFF);
    for (int run = 0; run < 20; ++run) {
        std::vector<int> samples(48);
        for (int& x : samples)
            x = draw(engine);
        support::seal(samples);
        std::uint32_t written = 0;
        for (std::size_t t = 0; t < 16; ++t)
            written = written << 1 | (samples[t] >> 1 & 1u);
        EXPECT_EQ(crc_of_block(samples), written);
    }
}

}  // namespace
}  // namespace vela::carrier
