#include <gtest/gtest.h>

#include <array>
#include <vela/codec/mux/SetAndIncrease.hpp>

namespace vela::codec::mux {

TEST(SetAndIncrease, ClearsForZeroLeavesForOneAndMovesOn) {
    std::array<unsigned, 4> masks{8, 4, 2, 1};
    unsigned* at = masks.data();
    for (const bool bit : {true, false, false})
        SetAndIncrease<unsigned>::put(at, bit);
    EXPECT_EQ(at, masks.data() + 3);
    EXPECT_EQ(masks, (std::array<unsigned, 4>{8, 0, 0, 1}));
}

}  // namespace vela::codec::mux
