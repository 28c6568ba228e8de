#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vela/permutation/MersenneTwister.hpp>

namespace vela::permutation {
namespace {

static_assert(std::uniform_random_bit_generator<MersenneTwister>);

// The value that the C++ standard demands ([rand.predef]).
TEST(MersenneTwister, TheTenThousandthOutputIsThePublishedOne) {
    MersenneTwister engine;
    for (int i = 1; i < 10000; ++i)
        engine();
    EXPECT_EQ(engine(), 4123659995u);
}

TEST(MersenneTwister, GivesTheOutputsOfTheLibrary) {
    for (const std::uint32_t seed : {5489u, 0u, 1u, 20261121u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(seed);
        MersenneTwister engine(seed);
        std::mt19937 library(seed);
        for (int i = 0; i < 200'000; ++i)
            ASSERT_EQ(engine(), library()) << i;
    }
}

TEST(MersenneTwister, StaysEqualOverMillionsOfOutputs) {
    MersenneTwister engine;
    std::mt19937 library;
    for (std::size_t taken = 0; taken < 3'000'000;) {
        const auto ready = engine.ready();
        ASSERT_EQ(ready.size(), MersenneTwister::block_size);
        ASSERT_TRUE(std::ranges::all_of(ready, [&](auto output) { return output == library(); }));
        engine.take(ready.size());
        taken += ready.size();
    }
}

// A shuffle takes a part of a block and leaves the rest to the next one.
TEST(MersenneTwister, WhatIsNotTakenComesNext) {
    MersenneTwister engine;
    std::mt19937 library;
    std::mt19937 sizes(1);
    for (int i = 0; i < 10'000; ++i) {
        const auto ready = engine.ready();
        ASSERT_GE(ready.size(), 1u);
        const std::size_t count = sizes() % (ready.size() + 1);
        for (const auto output : ready.first(count))
            ASSERT_EQ(output, library());
        engine.take(count);
        ASSERT_EQ(engine(), library());
    }
}

TEST(MersenneTwister, LookingTakesNothing) {
    MersenneTwister engine;
    const auto first = engine.ready().front();
    EXPECT_EQ(engine.ready().front(), first);
    EXPECT_EQ(engine(), first);
    EXPECT_EQ(engine.ready().size(), MersenneTwister::block_size - 1);
}

TEST(MersenneTwister, ACopyGoesOnByItself) {
    MersenneTwister engine;
    for (int i = 0; i < 700; ++i)
        engine();
    MersenneTwister copy = engine;
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(copy(), engine());
}

}  // namespace
}  // namespace vela::permutation
