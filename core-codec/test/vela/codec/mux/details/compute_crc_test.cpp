#include <gtest/gtest.h>

#include <random>
#include <vela/Range.hpp>
#include <vela/codec/mux/Projector.hpp>
#include <vela/codec/mux/details/compute_crc.hpp>

namespace vela::codec::mux::details {

Range<const int*> range_of(const std::vector<int>& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

unsigned long crc_of(const std::vector<int>& samples) {
    unsigned long crc = 0;
    EXPECT_TRUE(compute_crc(24, crc, range_of(samples)));
    return crc;
}

/// CRC-16/GSM bit by bit, as published.
unsigned long plain_crc(const std::vector<int>& samples) {
    unsigned state = 0;
    for (std::size_t i = 0; i < samples.size(); ++i)
        for (int byte = 0; byte < 3; ++byte) {
            unsigned value = static_cast<unsigned>(samples[i]) >> 8 * byte & 0xFF;
            if (i < 16 && byte == 0) value &= 0xFD;
            state ^= value << 8;
            for (int bit = 0; bit < 8; ++bit)
                state = (state & 0x8000 ? state << 1 ^ 0x1021 : state << 1) & 0xFFFF;
        }
    return ~state & 0xFFFF;
}

std::vector<int> random_samples(unsigned seed, std::size_t count) {
    std::mt19937 engine(seed);
    std::vector<int> samples(count);
    for (int& sample : samples)
        sample = static_cast<int>(engine() % (1u << 24)) - (1 << 23);
    return samples;
}

TEST(ComputeCrc, SilenceGivesTheComplementOfZero) {
    EXPECT_EQ(crc_of(std::vector<int>(16)), 0xFFFFu);
    EXPECT_EQ(crc_of(std::vector<int>(1000)), 0xFFFFu);
}

TEST(ComputeCrc, IsThePublishedSumOverThreeBytesASample) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const auto samples = random_samples(seed, 16 + 7 * seed);
        EXPECT_EQ(crc_of(samples), plain_crc(samples)) << seed;
    }
}

TEST(ComputeCrc, NegativeSamplesFeedTwosComplement) {
    EXPECT_EQ(crc_of(std::vector<int>(17, -1)), crc_of(std::vector<int>(17, 0xFFFFFF)));
    EXPECT_EQ(crc_of(std::vector<int>(17, -1)), plain_crc(std::vector<int>(17, -1)));
    EXPECT_EQ(crc_of(std::vector<int>(17, -8388608)), crc_of(std::vector<int>(17, 0x800000)));
}

// A reader sums up the block as it stands, its CRC included.
TEST(ComputeCrc, DoesNotDependOnWhereItIsWritten) {
    auto samples = random_samples(1, 32);
    for (int& sample : samples)
        sample &= -8;
    const Projector<unsigned, 3> projector(samples.size());
    const Range<int*> range(samples.data(), samples.data() + samples.size());
    EXPECT_TRUE(projector.project(range));
    const auto before = crc_of(samples);
    EXPECT_TRUE(projector.project_crc(range, static_cast<std::uint16_t>(before)));
    EXPECT_EQ(crc_of(samples), before);
}

TEST(ComputeCrc, EveryOtherBitCounts) {
    const auto samples = random_samples(2, 20);
    for (std::size_t i = 0; i < samples.size(); ++i)
        for (int bit = 0; bit < 24; ++bit) {
            auto changed = samples;
            changed[i] ^= 1 << bit;
            EXPECT_EQ(crc_of(changed) == crc_of(samples), i < 16 && bit == 1) << i << " " << bit;
        }
}

TEST(ComputeCrc, RefusesWhatHoldsNoCrc) {
    unsigned long crc = 7;
    EXPECT_FALSE(compute_crc(24, crc, range_of(std::vector<int>(15))));
    EXPECT_FALSE(compute_crc(24, crc, Range<int*>()));
    EXPECT_FALSE(compute_crc(16, crc, range_of(std::vector<int>(16))));
    EXPECT_FALSE(compute_crc(32, crc, range_of(std::vector<int>(16))));
    EXPECT_EQ(crc, 7u);
}

}  // namespace vela::codec::mux::details
