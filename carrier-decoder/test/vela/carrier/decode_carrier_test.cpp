#include <gtest/gtest.h>

#include <vela/carrier/decode_carrier.hpp>

#include "support/Sample.hpp"

namespace vela::carrier {
namespace {

using support::make_sample;

std::vector<int> joined(std::initializer_list<support::Sample> samples) {
    std::vector<int> out;
    for (const auto& sample : samples) {
        const std::vector<int> block = sample.samples();
        out.insert(out.end(), block.begin(), block.end());
    }
    return out;
}

TEST(DecodeCarrier, TakesBlocksWithBitLinesOfTheirOwn) {
    const auto carrier =
        joined({make_sample(2, 256, 6), make_sample(1, 256, 3), make_sample(3, 256, 9)});
    std::vector<Block> blocks;
    std::string why;
    ASSERT_TRUE(decode_carrier(blocks, why, carrier, 256)) << why;
    ASSERT_EQ(blocks.size(), 3u);
    EXPECT_EQ(blocks[0].nr_bitlines, 6u);
    EXPECT_EQ(blocks[1].nr_bitlines, 3u);
    EXPECT_EQ(blocks[2].nr_bitlines, 9u);
}

TEST(DecodeCarrier, JoinsChannelsWithSilenceWhereTheyAreMissing) {
    const auto carrier =
        joined({make_sample(1, 80, 3), make_sample(2, 80, 12), make_sample(1, 80, 3)});
    std::vector<Block> blocks;
    std::string why;
    ASSERT_TRUE(decode_carrier(blocks, why, carrier, 80)) << why;
    const Channels channels = join(blocks);
    ASSERT_EQ(channels.size(), 2u);
    std::vector<int> expected(80, 0);
    const auto& middle = blocks[1].channels.at(api::channel::id::LFE);
    expected.insert(expected.end(), middle.begin(), middle.end());
    expected.resize(240, 0);
    EXPECT_EQ(channels.at(api::channel::id::LFE), expected);
    EXPECT_EQ(channels.at(api::channel::id::Center).size(), 240u);
}

TEST(DecodeCarrier, NamesTheBlockThatIsBroken) {
    auto carrier = joined({make_sample(1, 80, 3), make_sample(1, 80, 3)});
    carrier[85] ^= 1;
    std::vector<Block> blocks;
    std::string why;
    EXPECT_FALSE(decode_carrier(blocks, why, carrier, 80));
    EXPECT_EQ(why, "block 1: there is no sync word");
    EXPECT_EQ(blocks.size(), 1u);
}

TEST(DecodeCarrier, RefusesWhatIsNoWholeBlocks) {
    auto carrier = joined({make_sample(1, 80, 3)});
    std::vector<Block> blocks;
    std::string why;
    EXPECT_FALSE(decode_carrier(blocks, why, carrier, 0));
    EXPECT_FALSE(decode_carrier(blocks, why, {}, 80));
    carrier.pop_back();
    EXPECT_FALSE(decode_carrier(blocks, why, carrier, 80));
    EXPECT_EQ(why, "79 samples are no whole blocks of 80");
}

TEST(FindFrameSize, ReadsTheFirstHeaderAndTries1000ForTheCodeThatTwoSizesShare) {
    std::string why;
    for (const std::size_t size : {80u, 992u, 1000u, 1024u, 4096u}) {
        std::size_t found = 0;
        const auto carrier = joined({make_sample(1, size, 3), make_sample(1, size, 3)});
        ASSERT_TRUE(find_frame_size(found, why, carrier)) << why;
        EXPECT_EQ(found, size);
    }
}

TEST(FindFrameSize, RefusesWhatDoesNotBeginWithABlock) {
    std::size_t found = 0;
    std::string why;
    EXPECT_FALSE(find_frame_size(found, why, std::vector<int>(15)));
    EXPECT_EQ(why, "there is no block in 15 samples");
    EXPECT_FALSE(find_frame_size(found, why, std::vector<int>(64)));
    EXPECT_EQ(why, "there is no sync word");
    auto carrier = joined({make_sample(1, 80, 3)});
    carrier.pop_back();
    EXPECT_FALSE(find_frame_size(found, why, carrier));
    EXPECT_EQ(why, "the block is cut short");
}

}  // namespace
}  // namespace vela::carrier
