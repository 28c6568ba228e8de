#include <gtest/gtest.h>

#include <check/Rebuilder.hpp>
#include <filesystem>
#include <vela/carrier/decode_carrier.hpp>

#include "support/Folder.hpp"
#include "support/answers.hpp"

namespace check {
namespace {

using namespace vela::api::channel::id;
using support::Folder;
using vela::carrier::Block;

TEST(Rebuilder, WritesWhatTheDecoderGives) {
    const Folder folder;
    Rebuilder rebuilder(folder.name("out_").str(), 44100, 1024);
    std::vector<Block> blocks;
    std::string why;
    ASSERT_TRUE(decode_carrier(blocks, why, support::carrier_of("scene-9.1", "enc_L.wav"), 1024))
        << why;
    for (const auto id : {Left, LeftSurround})
        ASSERT_TRUE(rebuilder.add_channel(why, id, {})) << why;
    vela::carrier::Channels expected;
    for (const Block& block : blocks) {
        rebuilder.take(block);
        ASSERT_TRUE(rebuilder.end_block(why)) << why;
        for (auto& [id, samples] : block.unattenuated())
            expected[id].insert(expected[id].end(), samples.begin(), samples.end());
    }
    ASSERT_TRUE(rebuilder.finish(why)) << why;
    EXPECT_EQ(support::read_samples(folder.name("out_L.wav")), expected.at(Left));
    EXPECT_EQ(std::filesystem::file_size(folder.name("out_Ls.wav").str()), 44u + 4 * 1024 * 3);
}

Block block_of(vela::carrier::Channels channels) {
    Block block;
    for (const auto& [id, samples] : channels)
        block.header.channels.push_back(id);
    block.channels = std::move(channels);
    return block;
}

TEST(Rebuilder, TakesAChannelOfSeveralCarriersFromTheFirst) {
    const Folder folder;
    Rebuilder rebuilder(folder.name("").str(), 48000, 2);
    std::string why;
    ASSERT_TRUE(rebuilder.add_channel(why, Center, {}) && rebuilder.add_channel(why, Center, {}));
    rebuilder.take(block_of({{Center, {1, 2}}}));
    rebuilder.take(block_of({{Center, {3, 4}}}));
    ASSERT_TRUE(rebuilder.end_block(why) && rebuilder.finish(why)) << why;
    EXPECT_EQ(support::read_samples(folder.name("C.wav")), (std::vector<int>{1, 2}));
}

TEST(Rebuilder, IsSilentWhereNothingCame) {
    const Folder folder;
    Rebuilder rebuilder(folder.name("").str(), 48000, 2);
    std::string why;
    ASSERT_TRUE(rebuilder.add_channel(why, Center, {}));
    ASSERT_TRUE(rebuilder.end_block(why));
    rebuilder.take(block_of({{Center, {3, 4}}}));
    ASSERT_TRUE(rebuilder.end_block(why) && rebuilder.finish(why)) << why;
    EXPECT_EQ(support::read_samples(folder.name("C.wav")), (std::vector<int>{0, 0, 3, 4}));
}

TEST(Rebuilder, TakesAttenuationBackAndStaysWithinFullScale) {
    const Folder folder;
    Rebuilder rebuilder(folder.name("").str(), 48000, 2);
    std::string why;
    ASSERT_TRUE(rebuilder.add_channel(why, Center, {}));
    Block block = block_of({{Center, {1000, 0x7FFFFF}}});
    block.instructions = {{vela::carrier::opcode::channel_attenuation, {Center, 60}}};
    rebuilder.take(block);
    ASSERT_TRUE(rebuilder.end_block(why) && rebuilder.finish(why)) << why;
    EXPECT_EQ(support::read_samples(folder.name("C.wav")), (std::vector<int>{2000, 0x7FFFFF}));
}

TEST(Rebuilder, KeepsTheFilesThatAreChecked) {
    const Folder folder;
    const auto original = folder.write_wav("C.wav", {{1, 2}});
    Rebuilder rebuilder(folder.name("").str(), 48000, 2);
    std::string why;
    EXPECT_FALSE(rebuilder.add_channel(why, Center, std::vector{original}));
    EXPECT_EQ(why, original.str() +
                       ": would be overwritten by the rebuilt channel; give another "
                       "--rebuild");
    EXPECT_EQ(support::read_samples(original), (std::vector<int>{1, 2}));
}

TEST(Rebuilder, TellsWhatCannotBeWritten) {
    const Folder folder;
    std::string why;
    Rebuilder nowhere(folder.name("no/such/").str(), 48000, 2);
    EXPECT_FALSE(nowhere.add_channel(why, Center, {}));
    EXPECT_EQ(why, folder.name("no/such/C.wav").str() + ": cannot be made");

    std::filesystem::create_symlink("/dev/full", folder.name("C.wav").str());
    Rebuilder full(folder.name("").str(), 48000, 2);
    ASSERT_TRUE(full.add_channel(why, Center, {}));
    (void)full.end_block(why);
    EXPECT_FALSE(full.finish(why));
    EXPECT_EQ(why, folder.name("C.wav").str() + ": could not be written to its end");
}

}  // namespace
}  // namespace check
