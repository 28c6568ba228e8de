#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vela/codec/mux/BitMap.hpp>
#include <vela/codec/mux/Projector.hpp>

namespace vela::codec::mux {

using test::bit_map;
using test::record_bits;

Range<int*> range_of(std::vector<int>& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

/// Writes bits behind the CRC, as text of "0" and "1".
template <unsigned N>
void write(Projector<unsigned, N>& projector, const std::string& body) {
    auto at = projector.body();
    for (const char bit : body)
        Projector<unsigned, N>::SetAndIncrease::put(at, bit == '1', 1);
    Projector<unsigned, N>::SetAndIncrease::put(at, 0, 32);
}

template <unsigned N>
void write_ones(Projector<unsigned, N>& projector) {
    write(projector, std::string(projector.body_bits(), '1'));
}

TEST(Projector, OneBitIsGivenUpAtEverySixteenthSample) {
    EXPECT_EQ((Projector<unsigned, 3>::capacity(1024)), 3009u);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(16)), 48u);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(17)), 3u * 17 - 1);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(32)), 95u);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(33)), 97u);
    EXPECT_EQ((Projector<unsigned, 16>::capacity(1000)), 16000u - 62);
}

TEST(Projector, BitsOfFourLines) {
    Projector<unsigned, 4> projector(18);
    const std::string line_2 = "1000000000000001";
    const std::string line_3 = "0100000000000001";
    write(projector, line_2 + line_3 + "101" + "1001");
    std::vector<int> samples(18);
    EXPECT_TRUE(projector.project(range_of(samples)));
    std::vector<int> expected(16, 1);
    expected[0] |= 4;
    expected[1] |= 8;
    expected[15] |= 12;
    expected.insert(expected.end(), {0b1010, 0b1001});
    EXPECT_EQ(samples, expected);
}

TEST(Projector, BitsOfFiveLinesGoSampleBySample) {
    Projector<unsigned, 5> projector(18);
    write(projector, std::string(16, '0') + "01" + "10" + std::string(28, '0') + "1001" + "00110");
    std::vector<int> samples(18);
    EXPECT_TRUE(projector.project(range_of(samples)));
    std::vector<int> expected(16, 1);
    expected[0] |= 8;
    expected[1] |= 16;
    expected.insert(expected.end(), {0b10010, 0b00110});
    EXPECT_EQ(samples, expected);
}

TEST(Projector, SixteenthSampleOfThreeLinesHasTwoBits) {
    Projector<unsigned, 3> projector(18);
    EXPECT_EQ(projector.body_bits(), 16u + 2 + 3);
    write(projector, std::string(16, '0') + "11" + "001");
    std::vector<int> samples(18);
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_EQ(samples[16], 6);
    EXPECT_EQ(samples[17], 1);
}

TEST(Projector, TheCrcStandsOnLineOneFromItsHighestBitOn) {
    const Projector<unsigned, 3> projector(16);
    std::vector<int> samples(16);
    EXPECT_TRUE(projector.project_crc(range_of(samples), 0xA001));
    std::vector<int> expected(16);
    expected[0] = expected[2] = expected[15] = 2;
    EXPECT_EQ(samples, expected);
}

template <typename T>
class ProjectorOfLines : public testing::Test {};

template <unsigned N>
using Lines = std::integral_constant<unsigned, N>;
using AllLines =
    testing::Types<Lines<3>, Lines<4>, Lines<5>, Lines<6>, Lines<7>, Lines<8>, Lines<9>, Lines<10>,
                   Lines<11>, Lines<12>, Lines<13>, Lines<14>, Lines<15>, Lines<16>>;
TYPED_TEST_SUITE(ProjectorOfLines, AllLines);

TYPED_TEST(ProjectorOfLines, RandomRecordsFollowTheBitMapAndAudioStays) {
    constexpr unsigned n = TypeParam::value;
    std::mt19937 engine(n);
    for (const unsigned l : {16u, 17u, 18u, 31u, 32u, 33u, 40u, 48u, 49u, 1000u, 1024u}) {
        SCOPED_TRACE(l);
        Projector<unsigned, n> projector(l);
        EXPECT_EQ((Projector<unsigned, n>::capacity(l)), bit_map(l, n).size());
        EXPECT_EQ(projector.body_bits(), bit_map(l, n).size() - 32);
        std::string body;
        while (body.size() < projector.body_bits())
            body += engine() % 2 != 0 ? '1' : '0';
        write(projector, body);
        std::vector<int> audio(l);
        for (int& sample : audio)
            sample = (static_cast<int>(engine() % (1u << 24)) - (1 << 23)) & -(1 << n);
        std::vector<int> samples = audio;
        EXPECT_TRUE(projector.project(range_of(samples)));

        const std::string sync(16, '1');
        EXPECT_EQ(record_bits(samples, n), sync + std::string(16, '0') + body);
        EXPECT_TRUE(projector.project_crc(range_of(samples), 0xFFFE));
        EXPECT_EQ(record_bits(samples, n), sync + "1111111111111110" + body);
        for (unsigned i = 0; i < l; ++i)
            ASSERT_EQ(samples[i] & -(1 << n), audio[i]);
    }
}

// Otherwise a record could look like the sync word of a block.
TYPED_TEST(ProjectorOfLines, LineZeroStaysZeroAtEverySixteenthSample) {
    constexpr unsigned n = TypeParam::value;
    std::vector<int> samples(100);
    Projector<unsigned, n> projector(samples.size());
    write_ones(projector);
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_TRUE(projector.project_crc(range_of(samples), 0xFFFF));
    const int all = (1 << n) - 1;
    for (std::size_t i = 0; i < samples.size(); ++i)
        EXPECT_EQ(samples[i], i >= 16 && i % 16 == 0 ? all - 1 : all) << i;
}

TEST(Projector, ARecordThatIsNotWrittenIsZero) {
    std::vector<int> samples(64);
    EXPECT_TRUE((Projector<unsigned, 3>(64).project(range_of(samples))));
    std::vector<int> expected(64);
    std::fill_n(expected.begin(), 16, 1);
    EXPECT_EQ(samples, expected);
}

TEST(Projector, OnlyEverSetsBits) {
    std::vector<int> samples(16, 7);
    const Projector<unsigned, 3> projector(16);
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_TRUE(projector.project_crc(range_of(samples), 0));
    EXPECT_EQ(samples, std::vector<int>(16, 7));
}

TEST(Projector, LaterSamplesOfALongerRangeStay) {
    std::vector<int> samples(40);
    Projector<unsigned, 3> projector(20);
    write_ones(projector);
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_TRUE(projector.project_crc(range_of(samples), 0xFFFF));
    EXPECT_EQ(samples[19], 7);
    EXPECT_EQ((std::vector<int>(samples.begin() + 20, samples.end())), std::vector<int>(20));
}

TEST(Projector, ShortBlocksHoldNoRecord) {
    for (const std::size_t l : {0u, 1u, 6u, 15u}) {
        SCOPED_TRACE(l);
        const Projector<unsigned, 3> projector(l);
        EXPECT_EQ(projector.body_bits(), 0u);
        EXPECT_NE((Projector<unsigned, 3>::capacity(l)), 0u);
        std::vector<int> samples(32);
        EXPECT_FALSE(projector.project(range_of(samples)));
        EXPECT_FALSE(projector.project_crc(range_of(samples), 0xFFFF));
        EXPECT_EQ(samples, std::vector<int>(32));
    }
}

// Their bits would wrap, and most samples would be filled from behind the words.
TEST(Projector, BlocksWithMoreBitsThanCanBeCountedHoldNoRecord) {
    constexpr std::size_t l = std::size_t{1} << 31;
    EXPECT_NE((Projector<unsigned, 3>::capacity(l)), 0u);
    EXPECT_EQ((Projector<unsigned, 3>(l).body_bits()), 0u);
    EXPECT_EQ((Projector<unsigned, 16>(l).body_bits()), 0u);
}

TEST(Projector, RangesThatDoNotHoldTheBlockAreRefused) {
    const Projector<unsigned, 3> projector(20);
    std::vector<int> samples(19);
    EXPECT_FALSE(projector.project(range_of(samples)));
    EXPECT_FALSE(projector.project_crc(range_of(samples), 0xFFFF));
    EXPECT_EQ(samples, std::vector<int>(19));
    EXPECT_FALSE(projector.project({}));
    EXPECT_FALSE(projector.project_crc({}, 0xFFFF));
}

}  // namespace vela::codec::mux
