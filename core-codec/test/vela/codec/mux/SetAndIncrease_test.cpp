#include <gtest/gtest.h>

#include <random>
#include <vector>
#include <vela/codec/mux/SetAndIncrease.hpp>
#include <vela/codec/zvk/Text.hpp>

namespace vela::codec::mux {

using zvk::test::bits;
using Writer = SetAndIncrease<unsigned>;

TEST(SetAndIncrease, TheFirstBitIsTheHighest) {
    std::vector<unsigned> words{0, 0};
    Writer::Cursor at{words.data()};
    Writer::put(at, 0b101, 3);
    Writer::put(at, 0, 0);
    Writer::put(at, 0x12345678, 32);
    Writer::put(at, 0, 29);
    EXPECT_EQ(at.word, words.data() + 2);
    EXPECT_EQ(at.count, 0u);
    EXPECT_EQ(words, (std::vector<unsigned>{0xA2468ACF, 0}));
}

TEST(SetAndIncrease, FullWordsHoldWhatWasPutIntoThem) {
    std::mt19937 engine(1);
    for (int round = 0; round < 50; ++round) {
        std::string expected;
        std::vector<unsigned> words(200);
        Writer::Cursor at{words.data()};
        for (int i = 0; i < 190; ++i) {
            const auto width = static_cast<unsigned>(engine() % 33);
            const auto value = static_cast<std::uint32_t>(engine() & ((1ULL << width) - 1));
            expected += bits(value, width);
            Writer::put(at, value, width);
        }
        std::string written;
        for (const unsigned* word = words.data(); word != at.word; ++word)
            written += bits(*word, 32);
        EXPECT_EQ(written.size() + at.count, expected.size());
        EXPECT_EQ(written, expected.substr(0, written.size()));
    }
}

}  // namespace vela::codec::mux
