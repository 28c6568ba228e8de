#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

using Code = Chain::Code;

TEST(ComputeQuality, AnIdenticalChannelIsAtTheFloor) {
    Group group = group_of(3, {{800, -1600, 2400, 8}});  // multiples of 2^3 survive the shift
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    EXPECT_EQ(group.dbrms[0], -144);
    EXPECT_EQ(group.dbpeak[0], -144);
    EXPECT_EQ(group.crest[0], 1);
    EXPECT_NEAR(group.score, -144, 1e-9);
}

TEST(ComputeQuality, ErrorsAreThoseOfTheShift) {
    Group group = group_of(4, {{1024 + 8, 1024 + 8, 1024 + 8, 1024}});
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    EXPECT_NEAR(group.dbpeak[0], 20 * std::log10(8.0 / 0x800000), 1e-9);
    EXPECT_NEAR(group.dbrms[0], 10 * std::log10(48.0) - 20 * std::log10(8388608.0), 1e-9);
    EXPECT_NEAR(group.crest[0], 8 / std::sqrt(48.0), 1e-9);
}

// However large the errors are, their squares add up as doubles do, one after the other.
TEST(ComputeQuality, SquaresOfErrorsAddUpInDoublePrecision) {
    for (int bits = 1; bits <= 24; ++bits)
        for (const std::size_t size : {1u, 7u, 1024u, 4096u}) {
            // A channel that is dropped as silent is measured against zeros.
            Group group = group_of(3, {noise(size, 1), noise(size, 2, 1 << (bits - 1))});
            const auto errors = samples_of(group.origs[1]);
            Chain chain;
            ASSERT_TRUE(chain.detect_silence(group));
            group.active.resize(1);
            ASSERT_TRUE(chain.rescaler(group));
            group.mixed = samples_of(group.rescaled[0]);
            group.fits = true;
            ASSERT_TRUE(chain.compute_quality(group));

            double sum = 0;
            for (const int error : errors)
                sum += static_cast<double>(error) * error;
            const double mean = sum / static_cast<double>(size) * 0x1p-23 * 0x1p-23;
            EXPECT_EQ(group.dbrms[1],
                      mean <= 3.9810717055349695e-15 ? -144.0 : 10 * std::log10(mean));
        }
}

TEST(ComputeQuality, OfSilentGroupsTheFewestBitlinesWin) {
    for (const std::uint32_t b : {3u, 7u, 12u}) {
        Group group = group_of(b, {{0, 1, 0, -1}, {0, 0, 0, 0}});
        Chain chain;
        ASSERT_EQ(chain(group), Code::ok);
        EXPECT_EQ(group.score, 0.01 * b);
    }
}

TEST(ComputeQuality, TheCommonAttenuationIsUndone) {
    for (const std::uint32_t ix : {60u, 120u, 240u}) {
        Group group = group_of(4, {{16 * 256, -16 * 256, 16 * 512, 0}});
        group.scaler_ix = ix;
        Chain chain;
        ASSERT_EQ(chain(group), Code::ok);
        EXPECT_EQ(group.rescaled[0].samples()[0], 256 >> ix / 60);
        EXPECT_EQ(group.dbrms[0], -144) << "gains of 2, 4 and 16 come back to the bit";
    }
}

TEST(ComputeQuality, TheScoreIsTheMeanPowerOverAllChannels) {
    Group group = group_of(8, {music(512, 1), music(512, 2)});
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    ASSERT_EQ(group.dbrms.size(), 2u);
    const auto power = [](double db) { return std::pow(10, db / 10); };
    EXPECT_NEAR(group.score, 10 * std::log10((power(group.dbrms[0]) + power(group.dbrms[1])) / 2),
                1e-9);
    EXPECT_LT(group.score, -40);
}

// One step in one of 2048 samples is 10 log10(2^-11 2^-46), below the floor.
TEST(ComputeQuality, ErrorsBelowTheFloorCountAsTheFloor) {
    std::vector<int> samples(2048, 1 << 10);
    samples[7] += 1;
    Group group = group_of(3, {samples});
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    EXPECT_EQ(group.dbrms[0], -144);
    EXPECT_NEAR(group.dbpeak[0], 20 * std::log10(1.0 / 0x800000), 1e-9);
}

TEST(ComputeQuality, ADroppedChannelCountsAgainstZeros) {
    Group group = group_of(4, {{1600, -1600, 1600, -1600}, {16, 16, 16, 16}});
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    EXPECT_EQ(group.dbrms[0], -144);
    EXPECT_NEAR(group.dbrms[1], 20 * std::log10(16.0 / 0x800000), 1e-9);
}

TEST(ComputeQuality, WhatDoesNotFitHasNoScore) {
    Group group = group_of(3, {music(256, 1), music(256, 2)});
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    EXPECT_FALSE(group.fits);
    EXPECT_FALSE(group.has_score);
}

TEST(ComputeQuality, RefusesSizesThatDisagree) {
    Group group = group_of(8, {music(256, 1), music(256, 2)});
    Chain chain;
    ASSERT_EQ(chain(group), Code::ok);
    ASSERT_TRUE(group.has_score);
    group.active.pop_back();
    EXPECT_FALSE(ComputeQuality()(group));
}

}  // namespace
}  // namespace vela::codec::v3::encode
