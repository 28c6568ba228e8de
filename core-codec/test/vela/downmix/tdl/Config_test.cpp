#include <gtest/gtest.h>

#include <algorithm>
#include <vector>
#include <vela/downmix/tdl/Config.hpp>

namespace vela::downmix::tdl {

TEST(Config, DefaultMovesNothing) {
    EXPECT_EQ(Config().movement, Movement::None);
    EXPECT_EQ(static_cast<unsigned>(Config().movement), 15u);
    EXPECT_EQ(Config().dimensions, 0u);
}

TEST(Config, OrderedByMovementThenDimensions) {
    const std::vector<Config> ascending{{Movement::Corners, 6},
                                        {Movement::CenterSurround, 0},
                                        {Movement::CenterSurround, 14},
                                        {Movement::LFEFronts, 2},
                                        {Movement::Trio, 0}};
    EXPECT_TRUE(std::ranges::is_sorted(ascending));
    EXPECT_EQ(std::ranges::adjacent_find(ascending), ascending.end());
}

}  // namespace vela::downmix::tdl
