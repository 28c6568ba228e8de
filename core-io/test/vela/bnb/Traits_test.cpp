#include <gtest/gtest.h>

#include <vela/bnb/Traits.hpp>

namespace vela::bnb {
namespace {

TEST(Traits, LimitsAreThoseOfTwosComplement) {
    EXPECT_EQ(Traits<Int16_tag>::MinNeg, -32768);
    EXPECT_EQ(Traits<Int16_tag>::MaxPos, 32767);
    EXPECT_EQ(Traits<Int24_tag>::MinNeg, -8388608);
    EXPECT_EQ(Traits<Int24_tag>::MaxPos, 8388607);
}

}  // namespace
}  // namespace vela::bnb
