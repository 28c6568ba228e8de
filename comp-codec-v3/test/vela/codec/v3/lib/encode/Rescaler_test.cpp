#include <gtest/gtest.h>

#include <algorithm>
#include <vela/codec/v3/lib/encode/Rescaler.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

Group rescaled(std::uint32_t b, const std::vector<int>& samples) {
    Group group = group_of(b, {samples});
    group.active = group.origs;
    Rescaler rescaler;
    EXPECT_TRUE(rescaler(group));
    return group;
}

TEST(Rescaler, WithoutDitherItIsAShiftTowardMinusInfinity) {
    const std::vector<int> samples{0, 1, -1, 7, 8, -8, -9, 0x7FFFFF, -0x800000};
    for (const std::uint32_t b : {3u, 8u, 12u}) {
        const Group group = rescaled(b, samples);
        for (std::size_t i = 0; i < samples.size(); ++i)
            EXPECT_EQ(group.rescaled[0].samples()[i], samples[i] >> b);
        EXPECT_EQ(samples_of(group.origs[0]), samples) << "the input stays as it was";
    }
}

TEST(Rescaler, FullScaleIsNotSaturatedAndMoreIs) {
    const Group group = rescaled(3, {0x7FFFFF, 0x800000, -0x800000, -0x800001});
    EXPECT_EQ(samples_of(group.rescaled[0]),
              (std::vector<int>{0x7FFFFF >> 3, INT32_MAX >> 11, -0x800000 >> 3, INT32_MIN >> 11}));
}

// Noise of -0x701 to -0x7FF takes a step from a full scale of 0x7FFFFF00, and none from 0x7FFFFFFF:
// of 4096 samples 32 on the average.
TEST(Rescaler, FullScaleIsDitheredFromAStepBelowTheHighestNumber) {
    Group group = group_of(3, {std::vector<int>(4096, 0x7FFFFF)});
    group.active = group.origs;
    group.dither = true;
    Rescaler rescaler;
    ASSERT_TRUE(rescaler(group));
    EXPECT_GT(std::ranges::count(group.rescaled[0].samples(), (0x7FFFFF >> 3) - 1), 5);
}

/// The product of `x` and 2^39 in 64 bits, cut at both ends, over 2^31.
int raised_by_product(int x) {
    const auto product =
        static_cast<std::int64_t>(static_cast<std::uint64_t>(std::int64_t{x}) << 39);
    if (product >= 0x3fffffff80000000) return INT32_MAX;
    if (product <= -0x4000000000000000) return INT32_MIN;
    return static_cast<int>(product / (std::int64_t{1} << 31));
}

TEST(Rescaler, WithNothingAttenuatedItEqualsTheProductWithOneForEverySample) {
    std::vector<int> samples{INT32_MAX, INT32_MAX - 1, INT32_MIN, INT32_MIN + 1};
    for (int bit = 0; bit < 31; ++bit)
        for (const int off : {-1, 0, 1})
            for (const int sign : {-1, 1})
                samples.push_back(sign * ((1 << bit) - 1) + off);
    std::mt19937 engine(1);
    for (int i = 0; i < 100000; ++i)
        samples.push_back(static_cast<int>(engine()) >> engine() % 10);

    const Group group = rescaled(3, samples);
    for (std::size_t i = 0; i < samples.size(); ++i)
        ASSERT_EQ(group.rescaled[0].samples()[i], raised_by_product(samples[i]) >> 11)
            << samples[i];
}

TEST(Rescaler, KeepsKeysAndDepths) {
    for (const unsigned ix : {0u, 60u}) {
        Group group = group_of(3, {{1, 2, 3, 4}, {5, 6, 7, 8}});
        group.active = group.origs;
        group.scaler_ix = ix;
        Rescaler rescaler;
        ASSERT_TRUE(rescaler(group));
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(group.rescaled[i].key, group.origs[i].key);
            EXPECT_EQ(group.rescaled[i].bit_depth, 24u);
        }
    }
}

TEST(Rescaler, ASilentGroupGetsNoDither) {
    Group group = group_of(5, {{1, -1, 0, 1}});
    group.dither = true;
    group.silence = Frame(group.origs[0].key, 4);
    group.active = {group.silence};
    Rescaler rescaler;
    ASSERT_TRUE(rescaler(group));
    EXPECT_EQ(samples_of(group.rescaled[0]), (std::vector<int>{0, 0, 0, 0}));
}

TEST(Rescaler, DitherStaysWithinAStepAndDiffersFromTimeToTime) {
    Rescaler rescaler;
    std::vector<std::vector<int>> results;
    for (int i = 0; i < 2; ++i) {
        Group group = group_of(6, {noise(1000, 1)});
        group.dither = true;
        group.active = group.origs;
        ASSERT_TRUE(rescaler(group));
        results.push_back(samples_of(group.rescaled[0]));
        for (std::size_t t = 0; t < 1000; ++t)
            EXPECT_LE(std::abs(results.back()[t] - (group.origs[0].samples()[t] >> 6)), 1);
    }
    EXPECT_NE(results[0], results[1]);
}

TEST(Rescaler, FramesLongerThanTheDitherFail) {
    for (const auto& [nr_samples, ok] : {std::pair(4096ul, true), std::pair(20481ul, false)}) {
        Group group = group_of(6, {std::vector<int>(nr_samples, 1000)});
        group.dither = true;
        group.active = group.origs;
        Rescaler rescaler;
        EXPECT_EQ(rescaler(group), ok);
    }
}

TEST(Rescaler, TheLimiterLeavesWhatStaysBelow99Percent) {
    constexpr int threshold = 8304720;
    for (const auto& [sum, ix] :
         {std::pair(threshold, 0u), std::pair(threshold + 1, 1u), std::pair(-threshold, 0u),
          std::pair(-threshold - 1, 1u), std::pair(2 * threshold, 60u)}) {
        Group group = group_of(5, {{sum / 2}, {sum - sum / 2 - 5}, {5}});
        group.active = group.origs;
        Rescaler rescaler;
        ASSERT_TRUE(rescaler(group));
        EXPECT_EQ(group.scaler_ix, ix) << sum;
        EXPECT_EQ(group.budget.instruction_bits, ix == 0 ? 32u : 48u);
    }
}

TEST(Rescaler, AttenuatesAMixBeyondFullScaleAndNeverASingleChannel) {
    const std::vector<int> loud(64, 0x7FFFFF);
    Group two = group_of(5, {loud, loud});
    two.active = two.origs;
    Rescaler rescaler;
    ASSERT_TRUE(rescaler(two));
    EXPECT_EQ(two.scaler_ix, 62u) << "twice full scale over 99 % of it: 2.02, which is 6.2 dB";
    EXPECT_LT(two.rescaled[0].samples()[0], 0x7FFFFF >> 5);

    const Group one = rescaled(5, loud);
    EXPECT_EQ(one.scaler_ix, 0u);
}

TEST(Rescaler, ARetryKeepsItsIndexAndStartsFromTheUnscaledChannels) {
    const std::vector<int> quiet(64, 1000);
    Group group = group_of(3, {quiet, quiet});
    group.active = group.origs;
    Rescaler rescaler;
    for (const unsigned ix : {60u, 120u, 240u}) {
        group.scaler_ix = ix;
        ASSERT_TRUE(rescaler(group));
        EXPECT_EQ(group.scaler_ix, ix);
        EXPECT_EQ(group.rescaled.size(), 2u);
        EXPECT_EQ(group.rescaled[1].samples()[0], 1000 / (1 << (ix / 60)) >> 3);
    }
    group.scaler_ix = 241;
    EXPECT_FALSE(rescaler(group)) << "there is no stronger attenuation";
}

TEST(Rescaler, RefusesFewerThanThreeBitlinesAndOddCountsOfChannels) {
    Rescaler rescaler;
    Group group = group_of(2, {{1, 2, 3, 4}});
    group.active = group.origs;
    EXPECT_FALSE(rescaler(group));
    group.nr_bitlines = 3;
    group.active.assign(4, group.origs[0]);
    EXPECT_FALSE(rescaler(group));
    group.active.clear();
    EXPECT_FALSE(rescaler(group));
}

TEST(Rescaler, AllInstructionsTogetherAddUp) {
    Group group = group_of(5, {{0, 0, 0, 0}, {0, 0, 0, 0}});
    group.active = group.origs;
    group.meta = 0;
    group.preset = 0;
    group.loudness = {api::loudness::Parameter::ProgramLoudness, 0};
    group.room_type = 0;
    group.version = Version{3, 2, 1};
    group.git_hash = 0;
    group.scaler_ix = 1;
    for (auto& [key, attn_ix] : group.orig_attn)
        attn_ix = 1;
    Rescaler rescaler;
    ASSERT_TRUE(rescaler(group));
    EXPECT_EQ(group.budget.instruction_bits, 32u + 40 + 16 + 40 + 16 + 2 * 24 + 32 + 40 + 16);
}

TEST(Rescaler, SetsAsideTheBitsOfTheInstructions) {
    struct Case {
        void (*set)(Group&);
        unsigned bits;
    };
    const Case cases[] = {{[](Group&) {}, 32},
                          {[](Group& g) { g.meta = 0; }, 72},
                          {[](Group& g) { g.preset = 255; }, 48},
                          {[](Group& g) {
                               g.loudness = {api::loudness::Parameter(), 1};
                           },
                           72},
                          {[](Group& g) { g.room_type = 0; }, 48},
                          {[](Group& g) {
                               g.version = Version{3, 2, 1};
                           },
                           64},
                          {[](Group& g) { g.git_hash = 1; }, 72},
                          {[](Group& g) { g.orig_attn[g.origs[0].key] = 1; }, 56},
                          {[](Group& g) { g.scaler_ix = 1; }, 48}};
    for (const Case& c : cases) {
        Group group = group_of(5, {{0, 0, 0, 0}});
        group.active = group.origs;
        c.set(group);
        Rescaler rescaler;
        ASSERT_TRUE(rescaler(group));
        EXPECT_EQ(group.budget.instruction_bits, c.bits);
    }
}

}  // namespace
}  // namespace vela::codec::v3::encode
