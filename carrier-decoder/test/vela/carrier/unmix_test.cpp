#include <gtest/gtest.h>

#include <vela/carrier/unmix.hpp>

#include "support/Mixer.hpp"

namespace vela::carrier {
namespace {

using support::Signal;

Block block_of(const support::Mixed& mixed, const std::vector<std::array<int, 2>>& centers,
               const std::vector<std::uint32_t>& ixs) {
    Block block;
    block.mix = mixed.mix;
    block.seeds = mixed.seeds;
    block.centers = centers;
    block.ixs = ixs;
    for (std::size_t i = 0; i < mixed.rebuilt.size(); ++i) {
        block.header.channels.push_back(static_cast<api::channel::id::Value>(i));
    }
    return block;
}

TEST(Unmix, GivesBackASingleChannelAsItIs) {
    Block block;
    block.header.channels = {api::channel::id::Center};
    block.mix = {5, -7, 0, 1 << 20};
    EXPECT_EQ(unmix(block), (std::vector<Signal>{block.mix}));
}

TEST(Unmix, KeepsAnchorsEvenAndPutsTheOthersOnTheLineBetweenThem) {
    const std::vector<Signal> channels = {{3, 0, 9, 0, 5, 0}, {1, 21, 0, 41, 0, 61}};
    const std::vector<std::uint32_t> ixs(6, 0);
    const std::vector<std::array<int, 2>> centers(1);
    const auto rebuilt = unmix(block_of(support::mix(channels, centers, ixs), centers, ixs));
    EXPECT_EQ(rebuilt[0], (Signal{2, 5, 8, 6, 4, 0}));
    EXPECT_EQ(rebuilt[1], (Signal{1, 20, 30, 40, 50, 60}));
}

TEST(Unmix, TakesApartWhatWasMixedAtEveryLength) {
    std::mt19937 engine(2);
    for (std::size_t nr_channels = 2; nr_channels <= 3; ++nr_channels) {
        for (std::size_t length = 16; length < 40; ++length) {
            SCOPED_TRACE(testing::Message() << nr_channels << " channels, length " << length);
            std::vector<Signal> channels;
            for (std::size_t i = 0; i < nr_channels; ++i) {
                channels.push_back(support::noise(engine, length, 1 << 19));
            }
            std::vector<std::array<int, 2>> centers(5);
            for (auto& center : centers) {
                const Signal drawn = support::noise(engine, 2, 1000);
                center = {drawn[0], drawn[1]};
            }
            const auto ixs = support::random_ixs(engine, length, 5);
            const auto mixed = support::mix(channels, centers, ixs);
            EXPECT_EQ(unmix(block_of(mixed, centers, ixs)), mixed.rebuilt);
        }
    }
}

TEST(Unmix, WrapsWhereSeedsAreDamaged) {
    Block block;
    block.header.channels = {api::channel::id::Left, api::channel::id::Right,
                             api::channel::id::Center};
    block.mix.assign(64, -1);
    block.seeds.assign(5, -0x7FFFFFFF - 1);
    block.centers = {{0x7FFFFFFF, -0x7FFFFFFF}};
    block.ixs.assign(64, 0);
    EXPECT_EQ(unmix(block).size(), 3u);
}

}  // namespace
}  // namespace vela::carrier
