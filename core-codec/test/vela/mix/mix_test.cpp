#include <gtest/gtest.h>

#include <vela/mix/mix.hpp>

#include "slow.hpp"

namespace vela::mix {
namespace {

using slow::Channels;
using slow::Vector;
using Indices = std::vector<std::uint64_t>;

TEST(Mix, TwoChannelsOfFourEndWithARawSampleOfX) {
    const Vector x{5, 9, -7, 3}, y{2, -3, 8, 11};
    const Centers1 centers{{7}, {10}, {3}};
    Vector seeds(2), out(4);
    ASSERT_TRUE(mix(seeds, out, Indices{0, 1, 2, 0}, centers, x, y));
    EXPECT_EQ(out, (Vector{4 + 2, -1 + 10 - 2, -6 + 4 + 3, 3 + 10}));
    EXPECT_EQ(seeds, (Vector{2 - 7, -1}));
}

TEST(Mix, TwoChannelsOfFiveEndWithARawSampleOfY) {
    const Vector x{5, 9, -7, 3, 1}, y{2, -3, 8, 11, 6};
    Vector seeds(2), out(5);
    ASSERT_TRUE(mix(seeds, out, Indices(5, 0), Centers1{{0}}, x, y));
    EXPECT_EQ(out, (Vector{4 + 2, -1 - 2, -6 + 4, -3 + 10, 0 + 6}));
    EXPECT_EQ(seeds, (Vector{2, -1}));
}

TEST(Mix, ThreeChannelsOfSevenEndInEveryWayThereIs) {
    const Vector x0{10, 7, -5, -13, 2, 9, 21};
    const Vector x1{3, 6, 1, 8, 15, 20, 30};
    const Vector x2{-1, -2, -3, 4, 5, -9, 17};
    const Centers2 centers{{1, 0}, {2, -2}, {3, -4}, {4, -6}, {5, -8}, {6, -10}, {7, -12}};
    Vector seeds(5), out(7);
    ASSERT_TRUE(mix(seeds, out, Indices{0, 1, 2, 3, 4, 5, 6}, centers, x0, x1, x2));
    EXPECT_EQ(out, (Vector{8 + 3 - 1,             // two raw samples
                           3 + 2 + 4 - 2,         // x2 still raw
                           -7 + 3 + 7 - 4 - 4,    //
                           -12 + 13 + 4 - 5 - 6,  //
                           -4 + 5 + 16 - 7 - 8,   //
                           12 + 6 + 20 - 10 - 8,  //
                           20 + 28 + 7 + 17}));   // x1 by thirds, x2 raw
    // The samples before the first anchors, and the predictions of x0 at 1 and x1 at 2.
    EXPECT_EQ(seeds, (Vector{3 - 1, -1 - 0, 3, -2 + 2, 7}));
}

TEST(Mix, IsTheSumThatTheDefinitionGivesForEveryLength) {
    std::mt19937 engine(2);
    for (std::size_t nr = 2; nr <= 3; ++nr) {
        for (std::size_t size = 2 * nr; size < 70; ++size) {
            SCOPED_TRACE(testing::Message() << nr << " channels of " << size);
            const Channels x = slow::random_channels(engine, nr, size, 21);
            const Vector c_of = slow::random_channels(engine, 1, size * (nr - 1), 20)[0];
            Indices ixs(size);
            Centers1 centers1(size);
            Centers2 centers2(size);
            for (std::size_t t = 0; t < size; ++t) {
                ixs[t] = size - 1 - t;
                if (nr == 2) centers1[ixs[t]] = {c_of[t]};
                if (nr == 3) centers2[ixs[t]] = {c_of[2 * t], c_of[2 * t + 1]};
            }
            Vector seeds(nr == 2 ? 2 : 5), out(size, 12345);
            ASSERT_TRUE(nr == 2 ? mix(seeds, out, ixs, centers1, x[0], x[1])
                                : mix(seeds, out, ixs, centers2, x[0], x[1], x[2]));
            ASSERT_EQ(out, slow::mix(x, c_of));
            const auto predicted = [&](std::size_t c, std::size_t t) {
                return static_cast<int>(*slow::prediction(x, c, t));
            };
            if (nr == 2)
                ASSERT_EQ(seeds, (Vector{x[1][0] - c_of[0], predicted(0, 1)}));
            else
                ASSERT_EQ(seeds, (Vector{x[1][0] - c_of[0], x[2][0] - c_of[1], predicted(0, 1),
                                         x[2][1] - c_of[3], predicted(1, 2)}));
        }
    }
}

TEST(Mix, OfTwoRefusesTooFewSamplesAndSizesThatDisagree) {
    const struct {
        std::size_t seeds, out, ixs, x, y;
        bool ok;
    } cases[] = {{2, 4, 4, 4, 4, true},  {2, 3, 3, 3, 3, false}, {1, 4, 4, 4, 4, false},
                 {5, 4, 4, 4, 4, false}, {2, 5, 4, 4, 4, false}, {2, 4, 5, 4, 4, false},
                 {2, 4, 4, 5, 4, false}, {2, 4, 4, 4, 5, false}};
    for (const auto& c : cases) {
        Vector seeds(c.seeds), out(c.out);
        EXPECT_EQ(mix(seeds, out, Indices(c.ixs), Centers1{{0}}, Vector(c.x), Vector(c.y)), c.ok)
            << &c - cases;
    }
}

TEST(Mix, OfThreeRefusesTooFewSamplesAndSizesThatDisagree) {
    const struct {
        std::size_t seeds, out, ixs, x0, x1, x2;
        bool ok;
    } cases[] = {{5, 6, 6, 6, 6, 6, true},  {5, 5, 5, 5, 5, 5, false}, {2, 6, 6, 6, 6, 6, false},
                 {5, 7, 6, 6, 6, 6, false}, {5, 6, 7, 6, 6, 6, false}, {5, 6, 6, 7, 6, 6, false},
                 {5, 6, 6, 6, 7, 6, false}, {5, 6, 6, 6, 6, 7, false}};
    for (const auto& c : cases) {
        Vector seeds(c.seeds), out(c.out);
        EXPECT_EQ(mix(seeds, out, Indices(c.ixs), Centers2{{0, 0}}, Vector(c.x0), Vector(c.x1),
                      Vector(c.x2)),
                  c.ok)
            << &c - cases;
    }
}

}  // namespace
}  // namespace vela::mix
