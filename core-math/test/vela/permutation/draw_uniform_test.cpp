#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>
#include <vela/permutation/draw_uniform.hpp>

namespace vela::permutation {
namespace {

// Gives the listed outputs and counts them.
struct Listed {
    static constexpr std::uint32_t min() { return 0; }
    static constexpr std::uint32_t max() { return 0xFFFFFFFFu; }
    std::uint32_t operator()() { return outputs.at(used++); }

    std::vector<std::uint32_t> outputs;
    std::size_t used = 0;
};

struct Case {
    const char* name;
    std::uint64_t a;
    std::uint64_t b;
    std::vector<std::uint32_t> outputs;
    std::uint64_t expected;
};

class DrawUniform : public testing::TestWithParam<Case> {};

TEST_P(DrawUniform, UsesJustTheseOutputs) {
    const Case& c = GetParam();
    Listed engine{c.outputs};
    EXPECT_EQ(draw_uniform(engine, c.a, c.b), c.expected);
    EXPECT_EQ(engine.used, c.outputs.size());
}

constexpr auto all_ones = std::numeric_limits<std::uint64_t>::max();

INSTANTIATE_TEST_SUITE_P(
    Outputs, DrawUniform,
    testing::Values(
        Case{"OneValueNeedsNone", 7, 7, {}, 7}, Case{"TwoValuesNeedOneBit", 0, 1, {0xFFFFFFFE}, 0},
        Case{"PowerOfTwoTakesAll", 10, 13, {0xFFFFFFFF}, 13},
        Case{"OutOfRangeIsDrawnAgain", 1, 6, {6, 7, 0xFFFFFFFD}, 6},
        Case{"OneAboveAPowerOfTwo", 0, 4, {5, 6, 7, 12}, 4},
        Case{"WholeOutput", 0, 0xFFFFFFFF, {0x89ABCDEF}, 0x89ABCDEF},
        Case{"ThirtyThreeBitsJoin16And17", 0, 0x1FFFFFFFF, {0xFFFF0001, 0xFFFE0003}, 0x20003},
        Case{"JoinedAreDrawnAgainTogether", 0, 0x100000000, {0x8000, 1, 0x8000, 0}, 0x100000000},
        Case{"All64Bits", 0, all_ones, {0x01234567, 0x89ABCDEF}, 0x0123456789ABCDEF}),
    [](const auto& param_info) { return param_info.param.name; });

TEST(DrawUniform, DefaultMersenneTwisterThrowsTheseDice) {
    std::mt19937 engine;
    for (const int expected : {5, 2, 5, 6, 2, 3, 4, 4, 6, 5, 3, 1})
        EXPECT_EQ(draw_uniform(engine, 1, 6), expected);
}

template <unsigned NrBits>
void agrees_with_the_library() {
    SCOPED_TRACE(NrBits);
    std::mt19937 engine;
    std::independent_bits_engine<std::mt19937, NrBits, std::uint64_t> library;
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(draw_bits(engine, NrBits), library());
}

TEST(DrawUniform, JoinsOutputsAsTheIndependentBitsEngine) {
    agrees_with_the_library<1>();
    agrees_with_the_library<31>();
    agrees_with_the_library<32>();
    agrees_with_the_library<33>();
    agrees_with_the_library<40>();
    agrees_with_the_library<63>();
    agrees_with_the_library<64>();
}

TEST(DrawUniform, IsEvenAndInRange) {
    std::mt19937 engine;
    std::array<int, 10> counts{};
    for (int i = 0; i < 100000; ++i)
        ++counts.at(draw_uniform(engine, 100, 109) - 100);
    for (const int count : counts)
        EXPECT_NEAR(count, 10000, 500);
}

}  // namespace
}  // namespace vela::permutation
