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

TEST(Put, WritesAllBitsOfAWordAndNone) {
    std::string out;
    unsigned left = 32;
    EXPECT_TRUE(put<Text>(out, left, 0xFFFFFFFE, 32));
    EXPECT_TRUE(put<Text>(out, left, 1, 0));
    EXPECT_EQ(out, bits(0xFFFFFFFE, 32));
    EXPECT_EQ(left, 0u);
}

TEST(Put, WritesNothingThatDoesNotFit) {
    std::string out;
    unsigned left = 7;
    EXPECT_FALSE(put<Text>(out, left, 0, 8));
    EXPECT_FALSE(put_run<Text>(out, left, true, 8));
    EXPECT_FALSE(put_run<Text>(out, left, true, ~std::uint64_t{0}));
    EXPECT_EQ(out, "");
    EXPECT_EQ(left, 7u);
}

TEST(Put, RunsMayBeLongerThanAWord) {
    for (const unsigned count : {0u, 1u, 31u, 32u, 33u, 64u, 100u})
        for (const bool bit : {false, true}) {
            SCOPED_TRACE(count);
            std::string out;
            unsigned left = 100;
            EXPECT_TRUE(put_run<Text>(out, left, bit, count));
            EXPECT_EQ(out, std::string(count, bit ? '1' : '0'));
            EXPECT_EQ(left, 100 - count);
        }
}

}  // namespace vela::codec::zvk::details
