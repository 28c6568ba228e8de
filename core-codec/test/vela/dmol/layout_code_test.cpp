#include <gtest/gtest.h>

#include <vela/dmol/layout_code.hpp>

namespace vela::dmol {

struct Pair {
    std::uint32_t input;
    std::uint32_t carrier;
    std::uint32_t code;
};

const Pair pairs[] = {
    {0x37, 0x3, 1},      {0x3F, 0xB, 2},      {0x47, 0x3, 8},      {0x633, 0x3, 11},
    {0x33, 0x3, 12},     {0x63F, 0x3F, 15},   {0x6633, 0x33, 20},  {0x663F, 0x3F, 30},
    {0x763F, 0x3F, 40},  {0x7E3F, 0x3F, 50},  {0x67BF, 0x1BF, 54}, {0x7FBF, 0x1BF, 62},
    {0x3, 0x4, 64},      {0x7, 0x3, 66},      {0x77, 0x37, 67},    {0x7F, 0x3F, 68},
    {0x1B7, 0x37, 69},   {0x1BF, 0x3F, 70},   {0x6637, 0x37, 71},  {0x7637, 0x37, 72},
    {0x7E37, 0x37, 73},  {0x67B7, 0x1B7, 74}, {0x7BF, 0x1BF, 75},  {0x77B7, 0x1B7, 76},
    {0x77BF, 0x1BF, 77}, {0x7FB7, 0x1B7, 78}, {0x4, 0x4, 128},     {0x804, 0x4, 129},
    {0x1804, 0x4, 130},
};

bool takes_any_carrier(std::uint32_t input) {
    return input == 0x4 || input == 0x804 || input == 0x1804;
}

bool code_of(std::uint32_t& code, std::uint64_t input, std::uint64_t carrier) {
    return layout_code(code, api::SpeakerLayout(input), api::SpeakerLayout(carrier));
}

TEST(LayoutCode, EveryInputHasTheNumberThatDecodersKnow) {
    for (const Pair& pair : pairs) {
        SCOPED_TRACE(pair.input);
        std::uint32_t code = 0;
        EXPECT_TRUE(code_of(code, pair.input, pair.carrier));
        EXPECT_EQ(code, pair.code);
    }
}

TEST(LayoutCode, AnotherCarrierIsRefused) {
    for (const Pair& pair : pairs) {
        SCOPED_TRACE(pair.input);
        std::uint32_t code = 999;
        const bool taken = code_of(code, pair.input, pair.carrier ^ 0x100);
        EXPECT_EQ(taken, takes_any_carrier(pair.input));
        EXPECT_EQ(code, taken ? pair.code : 999u);
    }
}

TEST(LayoutCode, InputsWithoutCarrierAreRefused) {
    for (const std::uint32_t input : {0x0u, 0x1u, 0x8u, 0xBu, 0xFFFFFFu, 0x1000000u}) {
        std::uint32_t code = 999;
        EXPECT_FALSE(code_of(code, input, 0x3)) << input;
        EXPECT_EQ(code, 999u);
    }
}

TEST(LayoutCode, BitsAboveTheChannelsAreIgnored) {
    std::uint32_t code = 0;
    EXPECT_TRUE(code_of(code, 0x37 | 0x100000000u, 0x3 | 0x2000000u));
    EXPECT_EQ(code, 1u);
}

}  // namespace vela::dmol
