#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vela/numeric/all_fit.hpp>

namespace vela::numeric {
namespace {

TEST(AllFit, OneThatDoesNotIsFoundWhereverItStands) {
    for (unsigned nr_bits = 1; nr_bits < 32; ++nr_bits) {
        const auto high = static_cast<std::int32_t>((1u << (nr_bits - 1)) - 1);
        for (std::size_t at = 0; at < 11; ++at) {
            SCOPED_TRACE(testing::Message() << nr_bits << " bits, at " << at);
            std::array<std::int32_t, 11> numbers{};
            for (const std::int32_t inside : {high, -high - 1}) {
                numbers[at] = inside;
                EXPECT_TRUE(all_fit(numbers, nr_bits));
            }
            for (const std::int32_t outside : {high + 1, -high - 2}) {
                numbers[at] = outside;
                EXPECT_FALSE(all_fit(numbers, nr_bits));
            }
        }
    }
}

TEST(AllFit, ThirtyTwoBitsHoldAnything) {
    using Limits = std::numeric_limits<std::int32_t>;
    EXPECT_TRUE(all_fit(std::array{Limits::min(), Limits::max()}, 32));
}

TEST(AllFit, NothingFits) {
    EXPECT_TRUE(all_fit({}, 1));
}

}  // namespace
}  // namespace vela::numeric
