#include <gtest/gtest.h>

#include <random>
#include <vela/carrier/BitMap.hpp>

#include "support/Writer.hpp"

namespace vela::carrier {
namespace {

TEST(BitMap, CountsOneBitLessForEverySixteenthSample) {
    EXPECT_EQ(nr_record_bits(16, 3), 48u);
    EXPECT_EQ(nr_record_bits(17, 3), 3u * 17 - 1);
    EXPECT_EQ(nr_record_bits(1000, 5), 5000u - 62);
    EXPECT_EQ(nr_record_bits(1024, 3), 3009u);
}

TEST(BitMap, PutsSyncWordChecksumAndHeaderStartOnTheLowestLinesForEveryCount) {
    for (unsigned b = 3; b <= 16; ++b) {
        for (std::size_t t = 0; t < 16; ++t) {
            for (unsigned line = 0; line < 3; ++line) {
                EXPECT_EQ(place_of(16 * line + t, b), (BitPlace{t, line}));
            }
        }
    }
}

TEST(BitMap, GoesFromTheTopLineDown) {
    EXPECT_EQ(place_of(48, 5), (BitPlace{0, 4}));
    EXPECT_EQ(place_of(49, 5), (BitPlace{0, 3}));
    EXPECT_EQ(place_of(50, 5), (BitPlace{1, 4}));
    EXPECT_EQ(place_of(64, 4), (BitPlace{16, 3}));
    EXPECT_EQ(place_of(66, 4), (BitPlace{16, 1}));
    EXPECT_EQ(place_of(67, 4), (BitPlace{17, 3}));
    EXPECT_EQ(place_of(70, 4), (BitPlace{17, 0}));
}

TEST(BitMap, EqualsTheTableWalkedFromItsStart) {
    for (unsigned b = 3; b <= 16; ++b) {
        for (const std::size_t length : {16u, 17u, 32u, 33u, 256u, 1000u}) {
            SCOPED_TRACE(testing::Message() << "lines " << b << ", samples " << length);
            const auto walked = support::places(length, b);
            ASSERT_EQ(nr_record_bits(length, b), walked.size());
            for (std::size_t bit = 0; bit < walked.size(); ++bit) {
                const BitPlace place = place_of(bit, b);
                ASSERT_EQ(place.sample, walked[bit][0]) << bit;
                ASSERT_EQ(place.line, walked[bit][1]) << bit;
            }
        }
    }
}

TEST(BitMap, ReadsNegativeSamplesAsTheirBits) {
    const std::vector<int> samples(32, -1);
    const std::vector<bool> bits = read_record(samples, 4);
    EXPECT_EQ(bits, std::vector<bool>(4 * 32 - 1, true));
}

TEST(BitMap, ReadsEachBitAtItsPlace) {
    std::mt19937 engine(1);
    std::uniform_int_distribution<int> draw(-0x800000, 0x7FFFFF);
    for (unsigned b = 3; b <= 16; ++b) {
        std::vector<int> samples(1000);
        for (int& x : samples)
            x = draw(engine);
        const std::vector<bool> bits = read_record(samples, b);
        ASSERT_EQ(bits.size(), nr_record_bits(samples.size(), b));
        for (std::size_t bit = 0; bit < bits.size(); ++bit) {
            const BitPlace place = place_of(bit, b);
            ASSERT_EQ(bits[bit], (samples[place.sample] >> place.line & 1) != 0) << b << ' ' << bit;
        }
    }
}

}  // namespace
}  // namespace vela::carrier
