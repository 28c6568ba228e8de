#include <gtest/gtest.h>

#include <check/traces.hpp>
#include <cmath>
#include <random>

#include "support/answers.hpp"

namespace check {
namespace {

using Samples = std::vector<int>;

Samples carrier() {
    return support::long_carrier();
}

std::optional<double> gain_in(const Samples& samples) {
    return find_gain(samples, support::long_carrier_frame);
}

TEST(Traces, StandAfterDitherOfOneStep) {
    std::mt19937 engine(1);
    std::uniform_int_distribution<int> step(-1, 1);
    Samples samples = carrier();
    for (int& x : samples)
        x += step(engine);
    EXPECT_EQ(gain_in(samples), 1.0);
}

TEST(Traces, TellTheGain) {
    for (const double db : {-6.0, -3.0, -0.1, 0.1, 2.5, 6.0, 12.0}) {
        const double gain = std::pow(10.0, db / 20);
        Samples samples = carrier();
        for (int& x : samples)
            x = static_cast<int>(std::lround(x * gain));
        ASSERT_TRUE(gain_in(samples)) << db;
        EXPECT_NEAR(*gain_in(samples), gain, 1e-9);
    }
}

TEST(Traces, AreNotFoundWhereThereWasNoCarrier) {
    std::mt19937 engine(2);
    for (int run = 0; run < 50; ++run) {
        std::uniform_int_distribution<int> draw(-(4 << run % 20), 4 << run % 20);
        Samples samples(32 * 256);
        for (int& x : samples)
            x = draw(engine);
        EXPECT_EQ(find_gain(samples, 256), std::nullopt) << run;
    }
}

TEST(Traces, AreNotFoundBehindAFilter) {
    Samples samples = carrier();
    for (std::size_t t = 0; t + 1 < samples.size(); ++t)
        samples[t] = (samples[t] + samples[t + 1]) / 2;
    EXPECT_EQ(gain_in(samples), std::nullopt);
}

TEST(Traces, CountEqualBlocksOnce) {
    Samples samples = carrier();
    for (std::size_t t = 512; t < samples.size(); ++t)
        samples[t] = samples[t - 512];
    EXPECT_EQ(gain_in(samples), std::nullopt);
}

TEST(Traces, NeedMoreThanOneBlock) {
    const Samples samples = carrier();
    EXPECT_EQ(find_gain(std::span(samples).first(512), 512), std::nullopt);
    EXPECT_EQ(find_gain({}, 1024), std::nullopt);
}

}  // namespace
}  // namespace check
