#include <gtest/gtest.h>

#include <check/Originals.hpp>

#include "support/Folder.hpp"

namespace check {
namespace {

using namespace vela::api::channel::id;
using support::Folder;
using Files = std::map<vela::carrier::ChannelId, vela::file::Name>;

TEST(Originals, GoOnAsTheEncoderReadsThem) {
    const Folder folder;
    Originals originals;
    std::string why;
    ASSERT_TRUE(originals.open(why,
                               {{Left, folder.write_wav("L.wav", {{1, 2, 3, 4, 5}})},
                                {Top, folder.write_wav("T.wav", {{7, 8, 9}})}},
                               2))
        << why;
    EXPECT_FALSE(originals.empty());
    EXPECT_EQ(originals.sample_rate(), 48000u);
    EXPECT_EQ(originals.nr_blocks(), 2u) << "the shortest counts, its last block filled up";
    ASSERT_TRUE(originals.next(why) && originals.next(why)) << why;
    EXPECT_EQ(originals.block().at(Left), (std::vector<int>{3, 4}));
    EXPECT_EQ(originals.block().at(Top), std::vector<int>{9});
}

TEST(Originals, MakeOneBlockEvenOfNothing) {
    const Folder folder;
    Originals originals;
    std::string why;
    ASSERT_TRUE(originals.open(why, {{Left, folder.write_wav("L.wav", {{}})}}, 16)) << why;
    EXPECT_EQ(originals.nr_blocks(), 1u);
}

TEST(Originals, MayBeNone) {
    Originals originals;
    std::string why;
    ASSERT_TRUE(originals.open(why, {}, 16));
    EXPECT_TRUE(originals.empty());
    EXPECT_EQ(originals.sample_rate(), std::nullopt);
    EXPECT_TRUE(originals.next(why));
}

std::string why_not(const Files& files) {
    Originals originals;
    std::string why;
    EXPECT_FALSE(originals.open(why, files, 16));
    return why;
}

TEST(Originals, AreWhatTheEncoderTakes) {
    const Folder folder;
    const auto good = folder.write_wav("good.wav", {{1}});
    const auto stereo = folder.write_wav("stereo.wav", {{1}, {2}});
    EXPECT_EQ(why_not({{Left, stereo}}), stereo.str() + ": is not mono, as an original must be");
    const auto narrow = folder.write_wav("narrow.wav", {{1}}, 16);
    EXPECT_EQ(why_not({{Left, narrow}}),
              narrow.str() + ": has not the 24 bits that the encoder takes");
    const auto slow = folder.write_wav("slow.wav", {{1}}, 24, 44100);
    EXPECT_EQ(why_not({{Left, good}, {Right, slow}}),
              slow.str() + ": has another sample rate than the other originals");
    EXPECT_EQ(why_not({{Left, folder.name("none")}}),
              folder.name("none").str() + ": cannot be opened");
}

}  // namespace
}  // namespace check
