#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>
#include <vela/api/SpeakerLayout.hpp>

namespace vela::api {
namespace {

std::string text_of(const SpeakerLayout& layout) {
    std::ostringstream out;
    layout.stream(out);
    return out.str();
}

std::vector<std::uint32_t> ids_of(const SpeakerLayout& layout) {
    std::vector<std::uint32_t> ids;
    EXPECT_TRUE(layout.each_channel([&](const Channel& channel) {
        ids.push_back(channel.id());
        return true;
    }));
    return ids;
}

TEST(SpeakerLayout, ADefaultOneIsEmpty) {
    const SpeakerLayout none;
    EXPECT_EQ(none.mask(), 0u);
    EXPECT_EQ(none.count(), 0u);
    EXPECT_TRUE(ids_of(none).empty());
    EXPECT_EQ(text_of(none), std::string(25, '0'));
}

TEST(SpeakerLayout, ChannelsComeByAscendingId) {
    EXPECT_EQ(ids_of(SpeakerLayout(0x7BF)),
              (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 7, 8, 9, 10}));
    EXPECT_EQ(ids_of(SpeakerLayout(0x1FFFFFF)).size(), 25u);
}

TEST(SpeakerLayout, TheWalkEndsWithTheFirstFalse) {
    int calls = 0;
    EXPECT_FALSE(SpeakerLayout(0x7BF).each_channel([&](const Channel& channel) {
        ++calls;
        return channel != channel::Center;
    }));
    EXPECT_EQ(calls, 3);
}

TEST(SpeakerLayout, StreamsTheHighestIdFirst) {
    EXPECT_EQ(text_of(SpeakerLayout(0x3)), std::string(23, '0') + "11");
    EXPECT_EQ(text_of(SpeakerLayout(0x1000000)), "1" + std::string(24, '0'));
    EXPECT_EQ(text_of(SpeakerLayout(0xFFFFFF)), "0" + std::string(24, '1'));
}

TEST(SpeakerLayout, TestsAndCountsItsChannels) {
    const SpeakerLayout layout(0x63F);
    EXPECT_EQ(layout.count(), 8u);
    EXPECT_TRUE(layout.test(channel::id::HeightLeft));
    EXPECT_TRUE(layout.test(channel::HeightLeft));
    EXPECT_FALSE(layout.test(channel::id::LeftBack));
    EXPECT_FALSE(layout.test(channel::Top));
    EXPECT_FALSE(layout.test(Channel()));
    EXPECT_FALSE(layout.test(100u));
}

TEST(SpeakerLayout, BitsWithoutAChannelAreIgnored) {
    const SpeakerLayout layout(0xFFFFFFFFFE000003);
    EXPECT_EQ(layout.mask(), 0x3u);
    EXPECT_EQ(layout.count(), 2u);
    EXPECT_FALSE(layout.test(25u));
    EXPECT_EQ(layout, SpeakerLayout(0x3));
    EXPECT_NE(layout, SpeakerLayout(0x7));
    EXPECT_EQ(ids_of(layout), (std::vector<std::uint32_t>{0, 1}));
    EXPECT_EQ(text_of(layout), std::string(23, '0') + "11");
}

}  // namespace
}  // namespace vela::api
