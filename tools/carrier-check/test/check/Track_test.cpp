#include <gtest/gtest.h>

#include <check/Track.hpp>

#include "support/Folder.hpp"

namespace check {
namespace {

using support::Folder;
using Samples = std::vector<int>;

Samples current(const Track& track, std::size_t channel = 0) {
    const auto samples = track.samples(channel);
    return {samples.begin(), samples.end()};
}

TEST(Track, GivesBlocksThenTheRestThenNothing) {
    const Folder folder;
    const auto file = folder.write_wav("a.wav", {{1, 2, 3, 4, -5}, {6, 7, 8, 9, 10}}, 24, 44100);
    Track track;
    std::string why;
    ASSERT_TRUE(track.open(why, file, 2)) << why;
    EXPECT_EQ(track.name(), file);
    EXPECT_EQ(track.size(), 5u);
    EXPECT_EQ(track.nr_channels(), 2u);
    EXPECT_EQ(track.sample_rate(), 44100u);
    EXPECT_EQ(track.bits_per_sample(), 24u);
    for (const Samples& expected :
         {Samples{1, 2}, Samples{3, 4}, Samples{-5}, Samples{}, Samples{}}) {
        ASSERT_TRUE(track.next(why)) << why;
        EXPECT_EQ(current(track), expected);
    }
    EXPECT_EQ(current(track, 1), Samples{});
}

TEST(Track, CountsBlocksFromTheFirstSampleWanted) {
    const Folder folder;
    Track track;
    std::string why;
    ASSERT_TRUE(track.open(why, folder.write_wav("a.wav", {{1, 2, 3, 4, 5}}), 2, 3)) << why;
    EXPECT_EQ(track.size(), 2u);
    ASSERT_TRUE(track.next(why));
    EXPECT_EQ(current(track), (Samples{4, 5}));
}

TEST(Track, TakesAFileWithoutSamples) {
    const Folder folder;
    Track track;
    std::string why;
    ASSERT_TRUE(track.open(why, folder.write_wav("a.wav", {{}}), 16)) << why;
    ASSERT_TRUE(track.next(why));
    EXPECT_EQ(current(track), Samples{});
}

std::string why_not(const vela::file::Name& file) {
    Track track;
    std::string why;
    EXPECT_FALSE(track.open(why, file, 16));
    return why;
}

TEST(Track, RefusesOtherWidths) {
    const Folder folder;
    const auto wide = folder.write_wav("a.wav", {{1}}, 32);
    EXPECT_EQ(why_not(wide), wide.str() +
                                 ": holds 32-bit samples in 1 channel; carriers and "
                                 "originals have 24 bits");
    const auto narrow = folder.write_wav("b.wav", {{1}, {1}}, 8);
    EXPECT_EQ(why_not(narrow), narrow.str() +
                                   ": holds 8-bit samples in 2 channels; carriers and "
                                   "originals have 24 bits");
}

TEST(Track, RefusesHalfASample) {
    const Folder folder;
    auto bytes = support::read_bytes(folder.write_wav("a.wav", {{1, 2}}));
    bytes.replace(40, 4, support::little_endian(4, 4));
    const auto file = folder.write("b.wav", bytes.substr(0, 48));
    EXPECT_EQ(why_not(file), file.str() + ": ends in the middle of a sample");
}

TEST(Track, HandsThroughWhatIsWrongWithTheFile) {
    const Folder folder;
    EXPECT_EQ(why_not(folder.name("none")), folder.name("none").str() + ": cannot be opened");
}

}  // namespace
}  // namespace check
