#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>
#include <vela/fir/Filter.hpp>

namespace vela::fir {
namespace {

TEST(FirFilter, ImpulseGivesTheTaps) {
    Filter<double> filter({0.5, -0.25, 2.0});
    EXPECT_EQ(filter.nr_taps(), 3u);
    EXPECT_EQ(filter(1.0), 0.5);
    EXPECT_EQ(filter(0.0), -0.25);
    EXPECT_EQ(filter(0.0), 2.0);
    EXPECT_EQ(filter(0.0), 0.0);
}

TEST(FirFilter, OneTapScales) {
    Filter<double> filter({3.0});
    EXPECT_EQ(filter(2.0), 6.0);
    EXPECT_EQ(filter(-1.0), -3.0);
}

// The sum written out over the whole input, in the same order: newest input first.
double convolved(const std::vector<double>& taps, const std::vector<double>& x, std::size_t t) {
    double sum = 0.0;
    for (std::size_t i = 0; i < taps.size(); ++i)
        sum += taps[i] * (i <= t ? x[t - i] : 0.0);
    return sum;
}

TEST(FirFilter, IsAConvolutionToTheBitInBlocksOfAnyLength) {
    std::mt19937 rng(1);
    std::uniform_real_distribution<double> uniform(-8388608.0, 8388607.0);
    for (const std::size_t nr_taps : {1, 2, 3, 4, 5, 66, 73, 79}) {
        std::vector<double> taps(nr_taps);
        for (double& tap : taps)
            tap = uniform(rng) / 8388608.0;
        std::vector<double> x(1000);
        for (double& sample : x)
            sample = uniform(rng);
        auto answers = x;
        Filter<double> filter(taps);
        for (std::size_t at = 0, size = 0; at < x.size(); at += size) {
            size = std::min<std::size_t>(rng() % 150, x.size() - at);
            filter(std::span(answers).subspan(at, size));
        }
        for (std::size_t t = 0; t < x.size(); ++t)
            ASSERT_EQ(answers[t], convolved(taps, x, t)) << nr_taps << " taps at " << t;
    }
}

}  // namespace
}  // namespace vela::fir
