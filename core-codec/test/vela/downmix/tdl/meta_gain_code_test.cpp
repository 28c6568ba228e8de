#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vela/downmix/tdl/meta_gain_code.hpp>

namespace vela::downmix::tdl {

float linear(double db) {
    return static_cast<float>(std::pow(10.0, db / 20.0));
}

struct Case {
    double db;
    std::uint32_t code;
};

TEST(MetaGainCode, StepsOfOneAndAHalfDecibelsToTheNearest) {
    const Case cases[] = {{0.0, 0},    {1.5, 1},   {0.74, 0},  {0.76, 1},  {2.24, 1},
                          {2.26, 2},   {-0.74, 0}, {3.0, 2},   {21.0, 14}, {21.74, 14},
                          {21.76, 15}, {22.5, 15}, {100.0, 15}};
    for (const Case& c : cases)
        EXPECT_EQ(meta_gain_code(linear(c.db)), c.code) << c.db;
    EXPECT_EQ(meta_gain_code(1.0f), 0u);
}

// A decoder takes 15 as the last step, yet everything that lowers the level ends there too.
TEST(MetaGainCode, AttenuationEndsInTheLastCode) {
    for (const double db : {-0.77, -1.0, -6.0, -300.0})
        EXPECT_EQ(meta_gain_code(linear(db)), 15u) << db;
    EXPECT_EQ(meta_gain_code(0.0f), 15u);
    EXPECT_EQ(meta_gain_code(-1.0f), 15u);
    EXPECT_EQ(meta_gain_code(std::numeric_limits<float>::infinity()), 15u);
}

}  // namespace vela::downmix::tdl
