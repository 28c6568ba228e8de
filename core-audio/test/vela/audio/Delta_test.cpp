#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>
#include <vela/audio/Delta.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::audio {
namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

struct Case {
    const char* name;
    std::vector<int> a;
    std::vector<int> b;
    double sum_of_squares;
    int peak;
};

const Case cases[] = {
    //  name             a                     b                  sum        peak
    {"Nothing", {}, {}, 0, 0},
    {"Equal", {1, -2, 3}, {1, -2, 3}, 0, 0},
    {"EitherSign", {0, 7, -3}, {100, 0, -3}, 10049, 100},
    {"Wrapped", {highest, lowest + 1}, {lowest, highest - 1}, 10, 3},
    {"WithoutMagnitude", {lowest, 5}, {0, 0}, 0x1p62 + 25, 5},
    {"FourWithoutMagnitude", {lowest, lowest, lowest, lowest}, {0, 0, 0, 0}, 0x1p64, 0},
};

TEST(Delta, IsTheSumOfSquaresAndTheLargestMagnitude) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Delta delta = Delta::between(c.a, c.b);
        EXPECT_EQ(delta.sum_of_squares, c.sum_of_squares);
        EXPECT_EQ(delta.peak, c.peak);
    }
}

Delta twin(const std::vector<int>& a, const std::vector<int>& b) {
    Delta delta;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const int difference = numeric::wrap_sub(a[i], b[i]);
        delta.sum_of_squares += static_cast<double>(difference) * difference;
        delta.peak = std::max(delta.peak, numeric::wrap_abs(difference));
    }
    return delta;
}

// Scores are compared to the last bit: the order of the sum must not show.
TEST(Delta, SquaresAddUpAsDoublesDoOneAfterTheOther) {
    std::mt19937 engine;
    for (int bits = 1; bits <= 32; ++bits)
        for (const std::size_t size : {1u, 7u, 1023u, 1024u, 4096u, 8192u, 8193u}) {
            SCOPED_TRACE(bits);
            std::vector<int> a(size), b(size);
            for (std::size_t i = 0; i < size; ++i) {
                b[i] = static_cast<int>(engine());
                a[i] = numeric::wrap_add(b[i], static_cast<int>(engine()) >> (32 - bits));
            }
            const Delta delta = Delta::between(a, b);
            const Delta expected = twin(a, b);
            ASSERT_EQ(delta.sum_of_squares, expected.sum_of_squares) << size;
            ASSERT_EQ(delta.peak, expected.peak) << size;
        }
}

}  // namespace
}  // namespace vela::audio
