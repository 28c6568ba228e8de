#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>
#include <vela/codec/mux/BitMap.hpp>
#include <vela/codec/mux/Projector.hpp>

namespace vela::codec::mux {

using test::bit_map;
using test::record_bits;

Range<int*> range_of(std::vector<int>& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

template <unsigned N>
std::vector<unsigned> entries(std::size_t nr_samples) {
    const Projector<unsigned, N> projector(nr_samples);
    return {projector.masks().begin(), projector.masks().end()};
}

TEST(Projector, OneBitIsGivenUpAtEverySixteenthSample) {
    EXPECT_EQ((Projector<unsigned, 3>::capacity(1024)), 3009u);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(16)), 48u);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(17)), 3u * 17 - 1);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(32)), 95u);
    EXPECT_EQ((Projector<unsigned, 3>::capacity(33)), 97u);
    EXPECT_EQ((Projector<unsigned, 16>::capacity(1000)), 16000u - 62);
}

TEST(Projector, EntriesOfFourLines) {
    std::vector<unsigned> expected;
    for (const unsigned line : {1u, 2u, 4u, 8u})
        expected.insert(expected.end(), 16, line);
    for (const unsigned line : {8u, 4u, 2u})
        expected.push_back(line);
    for (int sample = 17; sample < 32; ++sample)
        for (const unsigned line : {8u, 4u, 2u, 1u})
            expected.push_back(line);
    EXPECT_EQ(entries<4>(32), expected);
}

TEST(Projector, EntriesOfFiveLines) {
    std::vector<unsigned> expected;
    for (const unsigned line : {1u, 2u, 4u})
        expected.insert(expected.end(), 16, line);
    for (int sample = 0; sample < 16; ++sample)
        expected.insert(expected.end(), {16, 8});
    expected.insert(expected.end(), {16, 8, 4, 2});
    expected.insert(expected.end(), {16, 8, 4, 2, 1});
    EXPECT_EQ(entries<5>(18), expected);
}

TEST(Projector, SixteenthSampleOfThreeLinesHasTwoEntries) {
    const auto of_17 = entries<3>(17);
    ASSERT_EQ(of_17.size(), 50u);
    EXPECT_EQ(of_17[48], 4u);
    EXPECT_EQ(of_17[49], 2u);
    const auto of_18 = entries<3>(18);
    EXPECT_EQ((std::vector<unsigned>(of_18.begin() + 48, of_18.end())),
              (std::vector<unsigned>{4, 2, 4, 2, 1}));
}

template <typename T>
class ProjectorOfLines : public testing::Test {};

template <unsigned N>
using Lines = std::integral_constant<unsigned, N>;
using AllLines =
    testing::Types<Lines<3>, Lines<4>, Lines<5>, Lines<6>, Lines<7>, Lines<8>, Lines<9>, Lines<10>,
                   Lines<11>, Lines<12>, Lines<13>, Lines<14>, Lines<15>, Lines<16>>;
TYPED_TEST_SUITE(ProjectorOfLines, AllLines);

TYPED_TEST(ProjectorOfLines, EntriesFollowTheBitMap) {
    constexpr unsigned n = TypeParam::value;
    for (const unsigned l : {16u, 17u, 18u, 31u, 32u, 33u, 48u, 49u, 1000u, 1024u}) {
        SCOPED_TRACE(l);
        std::vector<unsigned> expected;
        for (const auto& at : bit_map(l, n))
            expected.push_back(1u << at.line);
        EXPECT_EQ(entries<n>(l), expected);
        EXPECT_EQ((Projector<unsigned, n>::capacity(l)), expected.size());
    }
}

TYPED_TEST(ProjectorOfLines, RandomRecordsReadBackAndAudioStays) {
    constexpr unsigned n = TypeParam::value;
    std::mt19937 engine(n);
    for (const unsigned l : {16u, 17u, 40u, 1000u}) {
        Projector<unsigned, n> projector(l);
        std::string record;
        unsigned* at = projector.masks().data();
        for (std::size_t i = 0; i < projector.masks().size(); ++i) {
            const bool bit = engine() % 2 != 0;
            record += bit ? '1' : '0';
            Projector<unsigned, n>::SetAndIncrease::put(at, bit);
        }
        std::vector<int> audio(l);
        for (int& sample : audio)
            sample = (static_cast<int>(engine() % (1u << 24)) - (1 << 23)) & -(1 << n);
        std::vector<int> samples = audio;
        EXPECT_TRUE(projector.project(range_of(samples)));

        std::string without_crc = record;
        without_crc.replace(16, 16, 16, '0');
        EXPECT_EQ(record_bits(samples, n), without_crc);
        EXPECT_TRUE(projector.project_crc(range_of(samples)));
        EXPECT_EQ(record_bits(samples, n), record);
        for (unsigned i = 0; i < l; ++i)
            ASSERT_EQ(samples[i] & -(1 << n), audio[i]);
    }
}

// Otherwise a record could look like the sync word of a block.
TYPED_TEST(ProjectorOfLines, LineZeroStaysZeroAtEverySixteenthSample) {
    constexpr unsigned n = TypeParam::value;
    std::vector<int> samples(100);
    const Projector<unsigned, n> projector(samples.size());
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_TRUE(projector.project_crc(range_of(samples)));
    const int all = (1 << n) - 1;
    for (std::size_t i = 0; i < samples.size(); ++i)
        EXPECT_EQ(samples[i], i >= 16 && i % 16 == 0 ? all - 1 : all) << i;
}

TEST(Projector, EveryBlockStartsWithAllBitsSet) {
    const auto fresh = entries<3>(64);
    Projector<unsigned, 3> first(64);
    std::ranges::fill(first.masks(), 0u);
    EXPECT_EQ(entries<3>(64), fresh);
}

TEST(Projector, OnlyEverSetsBits) {
    std::vector<int> samples(16, 7);
    Projector<unsigned, 3> projector(16);
    std::ranges::fill(projector.masks(), 0u);
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_TRUE(projector.project_crc(range_of(samples)));
    EXPECT_EQ(samples, std::vector<int>(16, 7));
}

TEST(Projector, LaterSamplesOfALongerRangeStay) {
    std::vector<int> samples(40);
    const Projector<unsigned, 3> projector(20);
    EXPECT_TRUE(projector.project(range_of(samples)));
    EXPECT_TRUE(projector.project_crc(range_of(samples)));
    EXPECT_EQ(samples[19], 7);
    EXPECT_EQ((std::vector<int>(samples.begin() + 20, samples.end())), std::vector<int>(20));
}

TEST(Projector, ShortBlocksHaveNoEntries) {
    for (const std::size_t l : {0u, 1u, 6u, 15u}) {
        SCOPED_TRACE(l);
        const Projector<unsigned, 3> projector(l);
        EXPECT_TRUE(projector.masks().empty());
        EXPECT_NE((Projector<unsigned, 3>::capacity(l)), 0u);
        std::vector<int> samples(32);
        EXPECT_FALSE(projector.project(range_of(samples)));
        EXPECT_FALSE(projector.project_crc(range_of(samples)));
        EXPECT_EQ(samples, std::vector<int>(32));
    }
}

TEST(Projector, RangesThatDoNotHoldTheBlockAreRefused) {
    const Projector<unsigned, 3> projector(20);
    std::vector<int> samples(19);
    EXPECT_FALSE(projector.project(range_of(samples)));
    EXPECT_FALSE(projector.project_crc(range_of(samples)));
    EXPECT_EQ(samples, std::vector<int>(19));
    EXPECT_FALSE(projector.project({}));
    EXPECT_FALSE(projector.project_crc({}));
}

TEST(Projector, MayBeMadeOnSeveralThreads) {
    std::vector<std::size_t> sizes(8);
    std::vector<std::thread> threads;
    for (std::size_t& size : sizes)
        threads.emplace_back([&size] {
            for (std::size_t l = 16; l < 80; ++l)
                size += entries<12>(l).size();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(sizes, std::vector<std::size_t>(8, sizes[0]));
    EXPECT_NE(sizes[0], 0u);
}

}  // namespace vela::codec::mux
