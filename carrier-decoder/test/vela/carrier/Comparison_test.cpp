#include <gtest/gtest.h>

#include <cmath>
#include <vela/carrier/Comparison.hpp>

namespace vela::carrier {
namespace {

using namespace api::channel::id;

constexpr std::size_t length = 4;

/// What decoding gives of a block, as far as comparing looks at it.
Block block_of(const Channels& channels) {
    Block block;
    block.mix.resize(length);
    block.channels = channels;
    for (const auto& [id, samples] : channels)
        block.header.channels.push_back(id);
    return block;
}

double db(double factor) {
    return 20 * std::log10(factor);
}

TEST(Comparison, ComparesADroppedChannelWithZerosAndPadsShortOriginals) {
    const Channels originals = {{Left, {8, 8, 8, 8, 8, 8}}, {Right, {0x800, 0x800, 0, 0, 0, 0}}};
    const std::vector<ChannelId> members = {Left, Right};
    Comparison comparison;
    std::string why;
    ASSERT_TRUE(comparison.add(why, block_of({{Left, {8, 8, 8, 8}}}), members, originals, 0));
    EXPECT_EQ(comparison.last()[0].rms_db, -144);
    EXPECT_NEAR(comparison.last()[1].peak_db, db(0x800 / 8388608.0), 1e-9);
    ASSERT_TRUE(comparison.add(why, block_of({{Left, {8, 8, 0, 0}}}), members, originals, 4));
    EXPECT_EQ(comparison.last()[0].rms_db, -144);
    ASSERT_TRUE(comparison.add(why, block_of({{Left, {0, 0, 0, 0}}}), members, originals, 8));
    EXPECT_EQ(comparison.last()[0].rms_db, -144);
}

TEST(Comparison, AttenuatesTheOriginalAsTheBlockSays) {
    Block block = block_of({{Left, {500, -500, 3, 0}}});
    block.instructions = {{opcode::channel_attenuation, {Left, 60}}};
    Comparison comparison;
    std::string why;
    const std::vector<ChannelId> members = {Left};
    ASSERT_TRUE(comparison.add(why, block, members, {{Left, {1000, -1001, 7, 1}}}, 0));
    EXPECT_EQ(comparison.last()[0].peak_db, -144);
}

TEST(Comparison, CountsAChannelOnceForEachGroupAndOnceInTheOverallFigures) {
    const Channels originals = {{Left, {0, 0, 0, 0}},
                                {Right, {0, 0, 0, 0}},
                                {Center, {0x400000, 0x400000, 0x400000, 0x400000}}};
    const Block left = block_of({{Left, {0, 0, 0, 0}}, {Center, {0, 0, 0, 0}}});
    const Block right =
        block_of({{Right, {0, 0, 0, 0}}, {Center, {0x400000, 0x400000, 0x400000, 0x400000}}});
    Comparison comparison;
    std::string why;
    ASSERT_TRUE(comparison.add(why, left, std::vector<ChannelId>{Left, Center}, originals, 0));
    ASSERT_TRUE(comparison.add(why, right, std::vector<ChannelId>{Right, Center}, originals, 0));
    const auto figures = comparison.figures();
    ASSERT_EQ(figures.size(), 3u);
    EXPECT_NEAR(figures.at(Center).rms_db, 10 * std::log10(0.25 / 2), 1e-9);
    EXPECT_NEAR(figures.at(Center).crest, std::sqrt(2), 1e-9);
    EXPECT_NEAR(comparison.overall().rms_db, 10 * std::log10(0.125 / 3), 1e-9);
    EXPECT_NEAR(comparison.overall().peak_db, db(0.5), 1e-9);
}

TEST(Comparison, RefusesBlocksOfAnotherCarrier) {
    const Channels originals = {{Left, {0, 0, 0, 0}}, {Right, {0, 0, 0, 0}}};
    const std::vector<int> zeros(length);
    Comparison comparison;
    std::string why;
    const std::vector<ChannelId> backwards = {Right, Left};
    EXPECT_FALSE(comparison.add(why, block_of({{Center, zeros}}), backwards, originals, 0));
    EXPECT_EQ(why, "channel Center does not belong there in this carrier");
    EXPECT_FALSE(
        comparison.add(why, block_of({{Left, zeros}, {Right, zeros}}), backwards, originals, 0));
    EXPECT_EQ(why, "channel Right does not belong there in this carrier");
    Block attenuated = block_of({{Left, zeros}});
    attenuated.instructions = {{opcode::channel_attenuation, {LFE, 1}}};
    EXPECT_FALSE(comparison.add(why, attenuated, backwards, originals, 0));
    EXPECT_EQ(why, "channel LFE is attenuated but does not belong in this carrier");
    const std::vector<ChannelId> more = {Left, Top};
    EXPECT_FALSE(comparison.add(why, block_of({{Left, zeros}}), more, originals, 0));
    EXPECT_EQ(why, "there is no original of channel Top");
}

}  // namespace
}  // namespace vela::carrier
