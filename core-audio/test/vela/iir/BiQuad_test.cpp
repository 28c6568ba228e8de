#include <gtest/gtest.h>

#include <random>
#include <vela/iir/BiQuad.hpp>

namespace vela::iir {
namespace {

TEST(BiQuad, ImpulseResponseOfItsTransferFunction) {
    // (1 + 2 z^-1 + 3 z^-2) / (1 + 0.5 z^-1 + 0.25 z^-2), divided out.
    BiQuad<double> section(1.0, 2.0, 3.0, 0.5, 0.25);
    EXPECT_EQ(section(1.0), 1.0);
    EXPECT_EQ(section(0.0), 1.5);
    EXPECT_EQ(section(0.0), 2.0);
    EXPECT_EQ(section(0.0), -1.375);
    EXPECT_EQ(section(0.0), 0.1875);
}

// The difference equation with named history, summed in the same order.
struct Plain {
    double b0, b1, b2, a1, a2;
    double x1 = 0, x2 = 0, y1 = 0, y2 = 0;

    double operator()(double x) {
        const double y = b0 * x + -a1 * y1 + b1 * x1 + -a2 * y2 + b2 * x2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }
};

TEST(BiQuad, IsTheDifferenceEquationToTheBit) {
    std::mt19937 rng(2);
    std::uniform_real_distribution<double> coef(-0.9, 0.9);
    std::uniform_real_distribution<double> sample(-8388608.0, 8388607.0);
    for (int round = 0; round < 50; ++round) {
        const double b0 = coef(rng), b1 = coef(rng), b2 = coef(rng);
        const double a2 = coef(rng), a1 = coef(rng) * (1 + a2);
        BiQuad<double> section(b0, b1, b2, a1, a2);
        Plain plain{b0, b1, b2, a1, a2};
        for (int t = 0; t < 500; ++t) {
            const double x = sample(rng);
            ASSERT_EQ(section(x), plain(x)) << "round " << round << " at " << t;
        }
    }
}

}  // namespace
}  // namespace vela::iir
