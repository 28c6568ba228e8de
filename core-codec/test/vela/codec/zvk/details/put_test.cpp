#include <gtest/gtest.h>

#include <vela/codec/zvk/Text.hpp>
#include <vela/codec/zvk/details/put.hpp>

namespace vela::codec::zvk::details {

using test::bits;
using test::Text;

TEST(Put, WritesTheMostSignificantBitFirst) {
    std::string out;
    unsigned left = 10;
    EXPECT_TRUE(put<Text>(out, left, 0b1101, 5));
    EXPECT_EQ(out, "01101");
    EXPECT_EQ(left, 5u);
}

TEST(Put, CutsAValueThatIsWiderThanItsField) {
    std::string out;
    unsigned left = 3;
    EXPECT_TRUE(put<Text>(out, left, 0xFA, 3));
    EXPECT_EQ(out, "010");
}

TEST(Put, WidensWithZerosBeyondSixtyFourBits) {
    std::string out;
    unsigned left = 255;
    EXPECT_TRUE(put<Text>(out, left, ~std::uint64_t{0}, 66));
    EXPECT_EQ(out, bits(0, 2) + std::string(64, '1'));
}

TEST(Put, WritesNothingThatDoesNotFit) {
    std::string out;
    unsigned left = 7;
    EXPECT_FALSE(put<Text>(out, left, 0, 8));
    EXPECT_EQ(out, "");
    EXPECT_EQ(left, 7u);
}

}  // namespace vela::codec::zvk::details
