#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>
#include <vector>
#include <vela/permutation/Permutation.hpp>
#include <vela/permutation/draw_uniform.hpp>

namespace vela::permutation {
namespace {

using Values = std::vector<unsigned long>;

Values iota(std::size_t n) {
    Values values(n);
    std::iota(values.begin(), values.end(), 0ul);
    return values;
}

template <std::size_t N>
Range<segment::Iterator<N, int>> range_over(std::vector<int>& values) {
    using At = segment::Iterator<N, int>;
    return {At(values.data()), At(values.data() + values.size())};
}

Permutation random_permutation(std::size_t n, MersenneTwister& engine) {
    Permutation permutation;
    permutation.identity(n);
    permutation.randomize(engine);
    return permutation;
}

// Slow and plain: draws the targets and moves into a second vector.
Values twin(const Values& input, std::mt19937& engine) {
    Values target = iota(input.size());
    for (std::size_t i = 0; i < target.size(); ++i)
        std::swap(target[i], target[draw_uniform(engine, i, target.size() - 1)]);
    Values output(input.size());
    for (std::size_t i = 0; i < input.size(); ++i)
        output[target[i]] = input[i];
    return output;
}

TEST(Permutation, IdentityMovesNothing) {
    Permutation permutation;
    permutation.identity(5);
    auto values = iota(5);
    EXPECT_TRUE(permutation.shuffle(values));
    EXPECT_EQ(values, iota(5));
}

TEST(Permutation, IdentityDropsWhatWasThere) {
    MersenneTwister engine;
    auto permutation = random_permutation(100, engine);
    auto values = iota(100);
    ASSERT_TRUE(permutation.shuffle(values));
    permutation.identity(7);
    values = iota(7);
    EXPECT_TRUE(permutation.shuffle(values));
    EXPECT_EQ(values, iota(7));
}

TEST(Permutation, OfNothingShufflesNothing) {
    MersenneTwister engine;
    auto permutation = random_permutation(0, engine);
    EXPECT_EQ(engine(), MersenneTwister()());
    permutation.invert();
    Values none;
    EXPECT_TRUE(permutation.shuffle(none));
    EXPECT_TRUE(permutation.shuffle(Range<segment::Iterator<1, int>>()));
}

TEST(Permutation, OfOneDrawsNoNumberAndIsAFixedPoint) {
    MersenneTwister engine;
    auto permutation = random_permutation(1, engine);
    EXPECT_EQ(engine(), MersenneTwister()());
    Values values{42};
    EXPECT_TRUE(permutation.shuffle(values));
    EXPECT_EQ(values, Values{42});
    permutation.invert();
    EXPECT_TRUE(permutation.shuffle(values));
    EXPECT_EQ(values, Values{42});
}

// The orders that the default engine gives decide which carrier comes out.
TEST(Permutation, DefaultMersenneTwisterGivesTheseOrders) {
    MersenneTwister engine;
    for (const Values& expected :
         {Values{6, 3, 4, 2, 0, 7, 5, 1}, Values{5, 7, 0, 6, 1, 2, 4, 3}}) {
        const auto permutation = random_permutation(8, engine);
        auto values = iota(8);
        ASSERT_TRUE(permutation.shuffle(values));
        EXPECT_EQ(values, expected);
    }
}

TEST(Permutation, RandomizeStartsFromWhatIsThere) {
    MersenneTwister engine;
    auto permutation = random_permutation(8, engine);
    auto values = iota(8);
    ASSERT_TRUE(permutation.shuffle(values));
    permutation.randomize(engine);
    auto again = iota(8);
    ASSERT_TRUE(permutation.shuffle(again));
    EXPECT_NE(again, values);
    EXPECT_TRUE(std::ranges::is_permutation(again, values));
}

// One output more or less for one learner, and all learners after it would see other orders.
void equals_the_twin(std::size_t n, MersenneTwister& engine, std::mt19937& twin_engine) {
    SCOPED_TRACE(n);
    const auto permutation = random_permutation(n, engine);
    auto values = iota(n);
    const auto expected = twin(values, twin_engine);
    ASSERT_TRUE(permutation.shuffle(values));
    ASSERT_EQ(values, expected);
    ASSERT_EQ(engine(), twin_engine()) << "draws as many numbers";
}

TEST(Permutation, MovesEachElementToItsTarget) {
    MersenneTwister engine;
    std::mt19937 twin_engine;
    for (std::size_t n = 0; n < 200; ++n)
        equals_the_twin(n, engine, twin_engine);
    for (const std::size_t power : {256u, 512u, 1024u, 2048u, 4096u, 65536u})
        for (const std::size_t n : {power - 1, power, power + 1})
            equals_the_twin(n, engine, twin_engine);
    for (int i = 0; i < 100; ++i)
        for (const std::size_t n : {2u, 440u, 624u, 1000u, 1024u})
            equals_the_twin(n, engine, twin_engine);
}

TEST(Permutation, TheInverseRestoresAVector) {
    MersenneTwister engine;
    for (std::size_t n = 1; n < 100; ++n) {
        const auto permutation = random_permutation(n, engine);
        auto inverse = permutation;
        inverse.invert();
        auto values = iota(n);
        ASSERT_TRUE(permutation.shuffle(values));
        ASSERT_TRUE(inverse.shuffle(values));
        ASSERT_EQ(values, iota(n));
        ASSERT_TRUE(inverse.shuffle(values));
        ASSERT_TRUE(permutation.shuffle(values));
        ASSERT_EQ(values, iota(n));
    }
}

TEST(Permutation, InvertedTwiceItIsTheSame) {
    MersenneTwister engine;
    const auto permutation = random_permutation(50, engine);
    auto twice = permutation;
    twice.invert();
    twice.invert();
    auto a = iota(50);
    auto b = iota(50);
    ASSERT_TRUE(permutation.shuffle(a));
    ASSERT_TRUE(twice.shuffle(b));
    EXPECT_EQ(a, b);
}

TEST(Permutation, AnInverseCanBeRandomized) {
    MersenneTwister engine;
    auto permutation = random_permutation(50, engine);
    permutation.invert();
    permutation.randomize(engine);
    auto inverse = permutation;
    inverse.invert();
    auto values = iota(50);
    ASSERT_TRUE(permutation.shuffle(values));
    EXPECT_NE(values, iota(50));
    ASSERT_TRUE(inverse.shuffle(values));
    EXPECT_EQ(values, iota(50));
}

template <std::size_t N>
void moves_whole_elements() {
    SCOPED_TRACE(N);
    MersenneTwister engine;
    for (const std::size_t n : {1u, 2u, 3u, 64u, 1000u}) {
        const auto permutation = random_permutation(n, engine);
        std::vector<int> values(N * n);
        std::iota(values.begin(), values.end(), 0);
        auto places = iota(n);
        ASSERT_TRUE(permutation.shuffle(range_over<N>(values)));
        ASSERT_TRUE(permutation.shuffle(places));
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t k = 0; k < N; ++k)
                ASSERT_EQ(values[N * i + k], static_cast<int>(N * places[i] + k));
    }
}

TEST(Permutation, ARangeMovesLikeAVectorWithItsElementsKeptWhole) {
    moves_whole_elements<1>();
    moves_whole_elements<2>();
}

TEST(Permutation, AnotherCountIsRefusedAndLeftAlone) {
    MersenneTwister engine;
    const auto permutation = random_permutation(4, engine);
    for (const std::size_t n : {0u, 3u, 5u}) {
        auto values = iota(n);
        EXPECT_FALSE(permutation.shuffle(values));
        EXPECT_EQ(values, iota(n));
    }
    std::vector<int> four(4);
    EXPECT_TRUE(permutation.shuffle(range_over<1>(four)));
    EXPECT_FALSE(permutation.shuffle(range_over<2>(four)));
    EXPECT_FALSE(permutation.shuffle(Range<segment::Iterator<1, int>>()));
}

TEST(Permutation, AllOrdersAreEquallyLikely) {
    MersenneTwister engine;
    std::array<int, 64> counts{};
    for (int i = 0; i < 60000; ++i) {
        const auto permutation = random_permutation(3, engine);
        auto values = iota(3);
        ASSERT_TRUE(permutation.shuffle(values));
        ++counts.at(16 * values[0] + 4 * values[1] + values[2]);
    }
    for (auto order = iota(3);;) {
        EXPECT_NEAR(counts.at(16 * order[0] + 4 * order[1] + order[2]), 10000, 500);
        if (!std::ranges::next_permutation(order).found) break;
    }
}

}  // namespace
}  // namespace vela::permutation
