#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vela/filter/lowpass/fir/get_coefs.hpp>
#include <vela/filter/lowpass/gain_db.hpp>

namespace vela::filter::lowpass::fir {
namespace {

struct Case {
    unsigned rate, freq;
    std::size_t nr_taps;
    double first, second, largest, sum;
};

class FirCoefs : public testing::TestWithParam<Case> {
protected:
    const std::vector<double>& taps() const { return *get_coefs(GetParam().freq, GetParam().rate); }
    double gain_at(double freq) const {
        const auto z = delay_at(freq, GetParam().rate);
        std::complex<double> sum, power = 1.0;
        for (const double tap : taps()) {
            sum += tap * power;
            power *= z;
        }
        return gain_db(sum);
    }
};

TEST_P(FirCoefs, TellingValues) {
    EXPECT_EQ(taps().size(), GetParam().nr_taps);
    EXPECT_EQ(taps().front(), GetParam().first);
    EXPECT_EQ(taps()[1], GetParam().second);
    EXPECT_EQ(std::ranges::max(taps()), GetParam().largest);
    EXPECT_NEAR(std::accumulate(taps().begin(), taps().end(), 0.0), GetParam().sum, 5e-7);
}

TEST_P(FirCoefs, LinearPhaseComesFromSymmetry) {
    EXPECT_TRUE(std::equal(taps().begin(), taps().end(), taps().rbegin()));
}

TEST_P(FirCoefs, PassBandIsFlatUpToTheFrequency) {
    for (double freq = 0; freq <= GetParam().freq; freq += 100)
        EXPECT_NEAR(gain_at(freq), 0.0, 0.03) << freq;
}

TEST_P(FirCoefs, StopBandBeginsATenthAboveIt) {
    for (double freq = 1.1 * GetParam().freq; freq <= GetParam().rate / 2.0; freq += 20)
        EXPECT_LT(gain_at(freq), -58.9) << freq;
}

TEST_P(FirCoefs, CutOffLiesBehindTheFrequency) {
    const double freq = GetParam().freq;
    const double above = first_below(-3, freq, [&](double f) { return gain_at(f); }) - freq;
    EXPECT_GE(above, 1200);
    EXPECT_LE(above, 1700);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Designs, FirCoefs, testing::Values(
    //   rate   freq   taps  first and last          second                   largest             sum
    Case{88200, 36000, 73,  0.0017483703661078927,  -0.00024525688596344986, 0.8544325794495429, 1.003127},
    Case{88200, 38000, 69,  0.0020254913452189107,  -0.0008129029359974424,  0.9015317583328512, 1.003244},
    Case{88200, 40000, 66, -0.0006227644106003755,   0.0006560562455621652,  0.63472207551058,   0.999270},
    Case{96000, 36000, 79,  0.0015352141412211823,  -0.0006404868484439605,  0.7852936081562665, 0.997227},
    Case{96000, 38000, 75,  0.0017033321580763412,  -0.00042644176679078013, 0.8288422644273706, 1.002850},
    Case{96000, 40000, 71,  0.0018016513466233939,  -0.0009423188660024301,  0.8725677410987492, 1.002683}),
    [](const auto& param_info) {
        return std::to_string(param_info.param.rate) + "_" + std::to_string(param_info.param.freq);
    });
// clang-format on

TEST(FirCoefsLookup, TheSameRatioOfFrequencyToRateIsTheSameTable) {
    EXPECT_EQ(get_coefs(18000, 44100), get_coefs(36000, 88200));
    EXPECT_EQ(get_coefs(20000, 48000), get_coefs(40000, 96000));
    EXPECT_EQ(get_coefs(13061, 32000), get_coefs(36000, 88200));
    EXPECT_NE(get_coefs(36000, 88200), get_coefs(36000, 96000));
}

TEST(FirCoefsLookup, NoDesign) {
    EXPECT_EQ(get_coefs(18000, 32000), nullptr);
    EXPECT_EQ(get_coefs(36000, 192000), nullptr);
}

}  // namespace
}  // namespace vela::filter::lowpass::fir
