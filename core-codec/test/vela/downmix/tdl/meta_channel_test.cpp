#include <gtest/gtest.h>

#include <vector>
#include <vela/downmix/tdl/meta_channel.hpp>

namespace vela::downmix::tdl {

using api::Channel;
using api::SpeakerLayout;
namespace id = api::channel::id;

const std::vector<id::Value> small{id::Left,         id::Center,        id::Right,
                                   id::LeftSurround, id::RightSurround, id::LFE};
const std::vector<id::Value> large{id::Left,          id::Center,   id::Right,     id::LeftSurround,
                                   id::RightSurround, id::LeftBack, id::RightBack, id::LFE};

struct Carrier {
    std::uint64_t mask;
    const std::vector<id::Value>& column;
};

const Carrier carriers[] = {{0x3, small},  {0x4, small},  {0xB, small},   {0x33, small},
                            {0x37, small}, {0x3F, small}, {0x1B7, large}, {0x1BF, large}};

// Channels count whether or not the layout holds them: LFE has index 5 on stereo.
TEST(MetaChannel, IndexOfEveryChannelOnEveryCarrier) {
    for (const Carrier& carrier : carriers) {
        SCOPED_TRACE(carrier.mask);
        for (std::uint32_t channel = 0; channel <= api::channel::id::count; ++channel) {
            unsigned expected = 99;
            for (unsigned i = 0; i < carrier.column.size(); ++i)
                if (carrier.column[i] == channel) expected = i;
            unsigned chix = 99;
            EXPECT_EQ(meta_channel_to_chix(chix, Channel::create(static_cast<id::Value>(channel)),
                                           SpeakerLayout(carrier.mask)),
                      expected != 99);
            EXPECT_EQ(chix, expected) << channel;
        }
    }
}

TEST(MetaChannel, BackChannelsAreNotIn51) {
    unsigned chix = 99;
    EXPECT_FALSE(meta_channel_to_chix(chix, api::channel::LeftBack, SpeakerLayout(0x3F)));
    EXPECT_EQ(chix, 99u);
}

TEST(MetaChannel, ChannelOfEveryIndexOnEveryCarrier) {
    for (const Carrier& carrier : carriers) {
        SCOPED_TRACE(carrier.mask);
        for (unsigned chix = 0; chix < carrier.column.size(); ++chix) {
            Channel channel;
            EXPECT_TRUE(meta_chix_to_channel(channel, chix, SpeakerLayout(carrier.mask)));
            EXPECT_EQ(channel.id(), carrier.column[chix]);
        }
    }
}

TEST(MetaChannel, AnIndexBeyondTheColumnLeavesTheChannel) {
    Channel channel;
    EXPECT_TRUE(meta_chix_to_channel(channel, 6, SpeakerLayout(0x3F)));
    EXPECT_FALSE(channel.valid());
    EXPECT_TRUE(meta_chix_to_channel(channel, 8, SpeakerLayout(0x1BF)));
    EXPECT_FALSE(channel.valid());
    channel = api::channel::Top;
    EXPECT_TRUE(meta_chix_to_channel(channel, 4000000000u, SpeakerLayout(0x3)));
    EXPECT_EQ(channel, api::channel::Top);
}

TEST(MetaChannel, OtherLayoutsAreRefused) {
    for (const std::uint64_t mask : {0x0u, 0x7u, 0x8u, 0x7Fu, 0x663Fu, 0x1000000u}) {
        SCOPED_TRACE(mask);
        unsigned chix = 99;
        Channel channel;
        EXPECT_FALSE(meta_channel_to_chix(chix, api::channel::Left, SpeakerLayout(mask)));
        EXPECT_FALSE(meta_chix_to_channel(channel, 0, SpeakerLayout(mask)));
        EXPECT_EQ(chix, 99u);
        EXPECT_FALSE(channel.valid());
    }
}

TEST(MetaChannel, BitsAboveTheChannelsAreIgnored) {
    unsigned chix = 99;
    EXPECT_TRUE(meta_channel_to_chix(chix, api::channel::LFE, SpeakerLayout(0x1BF | 1ull << 40)));
    EXPECT_EQ(chix, 7u);
}

}  // namespace vela::downmix::tdl
