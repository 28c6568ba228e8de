#include <gtest/gtest.h>

#include <map>
#include <vela/mix/deltas.hpp>
#include <vela/mix/mix.hpp>
#include <vela/mix/rounding.hpp>
#include <vela/mix/unmix.hpp>
#include <vela/numeric/wrap.hpp>

#include "slow.hpp"

namespace vela::mix {
namespace {

using slow::Channels;
using slow::Vector;
using Indices = std::vector<std::uint64_t>;

/// Centers of either dimension in one shape.
template <std::size_t N>
using Centers = std::vector<std::array<int, N>>;

template <std::size_t N>
Vector deltas_of(const Channels& x) {
    Vector d(x[0].size() * N);
    if constexpr (N == 1) {
        EXPECT_TRUE(deltas(d, x[0], x[1]));
    } else {
        EXPECT_TRUE(deltas(d, x[0], x[1], x[2]));
    }
    return d;
}

/// Mixed and taken apart again.
template <std::size_t N>
Channels round_trip(const Channels& x, const Indices& ixs, const Centers<N>& centers) {
    Vector seeds(N == 1 ? 2 : 5), m(x[0].size());
    Channels y(N + 1, Vector(m.size(), 12345));
    if constexpr (N == 1) {
        EXPECT_TRUE(mix(seeds, m, ixs, centers, x[0], x[1]));
        EXPECT_TRUE(unmix(y[0], y[1], seeds, m, ixs, centers));
    } else {
        EXPECT_TRUE(mix(seeds, m, ixs, centers, x[0], x[1], x[2]));
        EXPECT_TRUE(unmix(y[0], y[1], y[2], seeds, m, ixs, centers));
    }
    return y;
}

/// What a decoder can get: rounded anchors, raw samples, and the rest wrong by center less
/// residual.  All of it modulo 2^32.
template <std::size_t N>
Channels expected(const Channels& x, const Vector& d, const Indices& ixs,
                  const Centers<N>& centers) {
    Channels y = x;
    for (std::size_t c = 0; c < x.size(); ++c)
        for (std::size_t t = 0; t < x[c].size(); ++t) {
            if (slow::is_anchor(x, c, t)) {
                y[c][t] = N == 1 ? even(x[c][t]) : quad(x[c][t]);
            } else if (slow::prediction(x, c, t)) {
                const std::size_t k = slow::slot(x, c, t);
                const int miss = numeric::wrap_sub(centers[ixs[t]][k], d[t * N + k]);
                y[c][t] = numeric::wrap_add(x[c][t], miss);
            }
        }
    return y;
}

template <std::size_t N>
struct Clusters {
    Indices ixs;
    Centers<N> centers;
};

template <std::size_t N>
Clusters<N> random_clusters(std::mt19937& engine, std::size_t size, unsigned bits) {
    const Vector values = slow::random_channels(engine, 1, 7 * N, bits)[0];
    Clusters<N> clusters{Indices(size), Centers<N>(7)};
    for (std::size_t i = 0; i < values.size(); ++i)
        clusters.centers[i / N][i % N] = values[i];
    for (std::uint64_t& ix : clusters.ixs)
        ix = engine() % 7;
    return clusters;
}

/// A cluster per distinct residual, so that nothing is lost.
template <std::size_t N>
Clusters<N> exact_clusters(const Vector& d) {
    std::map<std::array<int, N>, std::uint64_t> known;
    Clusters<N> clusters;
    for (std::size_t t = 0; t < d.size() / N; ++t) {
        std::array<int, N> residual;
        std::copy_n(d.begin() + static_cast<std::ptrdiff_t>(t * N), N, residual.begin());
        const auto [at, is_new] = known.try_emplace(residual, clusters.centers.size());
        if (is_new) clusters.centers.push_back(residual);
        clusters.ixs.push_back(at->second);
    }
    return clusters;
}

/// Every small length, and the ones in use.
std::vector<std::size_t> lengths(std::size_t from) {
    std::vector<std::size_t> all{512, 960, 1000, 1001, 1002, 1023, 1024, 2048, 4096};
    for (std::size_t size = from; size < 80; ++size)
        all.push_back(size);
    return all;
}

template <std::size_t N>
void check_any_centers() {
    std::mt19937 engine(3);
    for (const std::size_t size : lengths(2 * N + 2)) {
        for (const unsigned bits : {4u, 8u, 21u, 32u}) {
            SCOPED_TRACE(testing::Message() << size << " samples of " << bits << " bits");
            const Channels x = slow::random_channels(engine, N + 1, size, bits);
            const auto [ixs, centers] = random_clusters<N>(engine, size, bits);
            const Vector d = deltas_of<N>(x);
            ASSERT_EQ(round_trip<N>(x, ixs, centers), expected<N>(x, d, ixs, centers));
        }
    }
}

TEST(Unmix, OfTwoMissesByCenterLessResidualAndAnchorsByTheirRoundingAlone) {
    check_any_centers<1>();
}
TEST(Unmix, OfThreeMissesByCenterLessResidualAndAnchorsByTheirRoundingAlone) {
    check_any_centers<2>();
}

template <std::size_t N>
void check_exact_centers() {
    std::mt19937 engine(4);
    for (const std::size_t size : lengths(2 * N + 2)) {
        for (const unsigned bits : {4u, 8u, 21u, 32u}) {
            SCOPED_TRACE(testing::Message() << size << " samples of " << bits << " bits");
            const Channels x = slow::random_channels(engine, N + 1, size, bits);
            const auto [ixs, centers] = exact_clusters<N>(deltas_of<N>(x));
            const Channels y = round_trip<N>(x, ixs, centers);
            for (std::size_t c = 0; c < x.size(); ++c)
                for (std::size_t t = 0; t < size; ++t) {
                    const int anchor = N == 1 ? even(x[c][t]) : quad(x[c][t]);
                    ASSERT_EQ(y[c][t], slow::is_anchor(x, c, t) ? anchor : x[c][t]) << c << t;
                }
        }
    }
}

TEST(Unmix, OfTwoGivesTheInputBackIfNoResidualIsRounded) {
    check_exact_centers<1>();
}
TEST(Unmix, OfThreeGivesTheInputBackIfNoResidualIsRounded) {
    check_exact_centers<2>();
}

TEST(Unmix, TwoChannelsByHand) {
    Vector y0(4), y1(4);
    ASSERT_TRUE(unmix(y0, y1, Vector{-5, -1}, Vector{6, 7, 1, 13}, Indices{0, 1, 2, 0},
                      Centers1{{7}, {10}, {3}}));
    EXPECT_EQ(y0, (Vector{4, 9, -6, 3}));
    EXPECT_EQ(y1, (Vector{2, -2, 7, 10}));
}

TEST(Unmix, WithoutCentersGivesEvenAnchorsAndStraightLinesBetween) {
    const Channels x{{4, -1, -6, -3, 0}, {2, -2, 4, 10, 6}};
    const Channels y = round_trip<1>(x, Indices(5, 0), Centers1{{0}});
    EXPECT_EQ(deltas_of<1>(x), Vector(5, 0));
    EXPECT_EQ(y, x);

    const Channels odd{{5, 9, -7, 3, 1}, {2, -3, 8, 11, 6}};
    EXPECT_EQ((round_trip<1>(odd, Indices(5, 0), Centers1{{0}})), x);
}

TEST(Unmix, ThreeChannelsOfSevenByHand) {
    const Centers2 centers{{1, 0}, {2, -2}, {3, -4}, {4, -6}, {5, -8}, {6, -10}, {7, -12}};
    Vector y0(7), y1(7), y2(7);
    ASSERT_TRUE(unmix(y0, y1, y2, Vector{2, -1, 3, 0, 7}, Vector{10, 7, -5, -6, 2, 20, 72},
                      Indices{0, 1, 2, 3, 4, 5, 6}, centers));
    EXPECT_EQ(y0, (Vector{8, 5, -4, -12, 1, 18, 20}));
    EXPECT_EQ(y1, (Vector{3, 4, 3, 17, 16, 10, 35}));
    EXPECT_EQ(y2, (Vector{-1, -2, -4, -11, -15, -8, 17}));
}

TEST(Unmix, OfTwoTakesThreeSamplesThoughMixDoesNot) {
    Vector y0(3), y1(3), seeds(2), m(3);
    const Centers1 centers{{5}, {-1}};
    const Indices ixs{0, 1, 0};
    EXPECT_FALSE(mix(seeds, m, ixs, centers, Vector(3), Vector(3)));
    ASSERT_TRUE(unmix(y0, y1, Vector{2, 3}, Vector{11, 20, 30}, ixs, centers));
    EXPECT_EQ(y0, (Vector{11 - 7, 3 - 1, 2 * 3 - 4}));
    EXPECT_EQ(y1, (Vector{2 + 5, 20 - 2, 30 - 2}));
}

// It is mixed without a center, so that its index may name none.
TEST(Unmix, OfTwoDoesNotLookUpACenterForTheLastSample) {
    for (const std::size_t size : {3u, 4u, 5u, 6u, 7u}) {
        Vector m(size, 10), y0(size), y1(size), same0(size), same1(size);
        Indices ixs(size, 0);
        ASSERT_TRUE(unmix(y0, y1, Vector{1, 2}, m, ixs, Centers1{{3}}));
        ixs.back() = ~std::uint64_t{0} >> 8;
        ASSERT_TRUE(unmix(same0, same1, Vector{1, 2}, m, ixs, Centers1{{3}}));
        EXPECT_EQ(same0, y0);
        EXPECT_EQ(same1, y1);
    }
}

TEST(Unmix, OfThreeTakesFiveSamplesThoughMixDoesNot) {
    Vector y0(5), y1(5), y2(5), seeds(5), m(5);
    const Centers2 centers{{1, 10}, {2, 20}};
    const Indices ixs{0, 1, 0, 1, 0};
    EXPECT_FALSE(mix(seeds, m, ixs, centers, Vector(5), Vector(5), Vector(5)));
    ASSERT_TRUE(
        unmix(y0, y1, y2, Vector{3, -1, 9, 4, 50}, Vector{17, 75, 100, 200, 300}, ixs, centers));
    // x0: 17 - 4 - 9 = 4, a step of 5 up to the anchor 24; at 4 the rest, raw.
    EXPECT_EQ(y0, (Vector{4, 11, 20, 24, 300 - 80 - 222}));
    // x1: 75 - 24 - 11 = 40 at 1, predicted 50 at 2: a step of 10 on to 70 and the anchor 80.
    EXPECT_EQ(y1, (Vector{4, 40, 60, 72, 80}));
    // x2: 100 - 60 - 20 = 20 at 2, the rest 200 - 72 - 24 = 104 at 3, predicted 84: up to 148.
    EXPECT_EQ(y2, (Vector{9, 24, 20, 104, 84 + 2 * 64 + 10}));
}

TEST(Unmix, OfTwoRefusesTooFewSamplesAndSizesThatDisagree) {
    const struct {
        std::size_t y0, y1, seeds, m, ixs;
        bool ok;
    } cases[] = {{4, 4, 2, 4, 4, true},  {2, 2, 2, 2, 2, false}, {5, 4, 2, 4, 4, false},
                 {4, 5, 2, 4, 4, false}, {4, 4, 3, 4, 4, false}, {4, 4, 2, 5, 4, false},
                 {4, 4, 2, 4, 5, false}};
    for (const auto& c : cases) {
        Vector y0(c.y0), y1(c.y1);
        EXPECT_EQ(unmix(y0, y1, Vector(c.seeds), Vector(c.m), Indices(c.ixs), Centers1{{0}}), c.ok)
            << &c - cases;
    }
}

TEST(Unmix, OfThreeRefusesTooFewSamplesAndSizesThatDisagree) {
    const struct {
        std::size_t y0, y1, y2, seeds, m, ixs;
        bool ok;
    } cases[] = {{6, 6, 6, 5, 6, 6, true},  {4, 4, 4, 5, 4, 4, false}, {7, 6, 6, 5, 6, 6, false},
                 {6, 7, 6, 5, 6, 6, false}, {6, 6, 7, 5, 6, 6, false}, {6, 6, 6, 4, 6, 6, false},
                 {6, 6, 6, 5, 7, 6, false}, {6, 6, 6, 5, 6, 7, false}};
    for (const auto& c : cases) {
        Vector y0(c.y0), y1(c.y1), y2(c.y2);
        EXPECT_EQ(unmix(y0, y1, y2, Vector(c.seeds), Vector(c.m), Indices(c.ixs), Centers2{{0, 0}}),
                  c.ok)
            << &c - cases;
    }
}

}  // namespace
}  // namespace vela::mix
