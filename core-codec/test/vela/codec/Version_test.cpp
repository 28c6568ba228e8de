#include <gtest/gtest.h>

#include <string>
#include <vela/codec/Version.hpp>

namespace vela::codec {

TEST(Version, PacksMajorIntoTheTopByte) {
    EXPECT_EQ((Version{3, 2, 1}.packed()), 0x030201u);
    EXPECT_EQ((Version{255, 0, 128}.packed()), 0xFF0080u);
}

TEST(Version, TextsAreThoseThatUsersSee) {
    EXPECT_STREQ(version_text, "3.2.1");
    EXPECT_STREQ(build_hash_text, "dca34e54");
    EXPECT_EQ(std::stoul(build_hash_text, nullptr, 16), 0xDCA34E54u);
}

}  // namespace vela::codec
