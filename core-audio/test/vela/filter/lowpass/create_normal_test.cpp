#include <gtest/gtest.h>

#include <vector>
#include <vela/filter/lowpass/create_normal.hpp>
#include <vela/filter/lowpass/fir/get_coefs.hpp>
#include <vela/filter/lowpass/iir/get_coefs.hpp>
#include <vela/fir/Filter.hpp>
#include <vela/iir/BiQuad.hpp>

namespace vela::filter::lowpass {
namespace {

struct Design {
    unsigned rate, freq;
    unsigned fir_delay;
};

constexpr Design designs[] = {
    {88200, 36000, 36}, {88200, 38000, 34}, {88200, 40000, 33},
    {96000, 36000, 39}, {96000, 38000, 37}, {96000, 40000, 35},
};

TEST(CreateNormal, NoLowpassNeedsNoDesign) {
    const auto filter = create_normal<double>(Type::None, 0, 0);
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->delay(), 0u);
    for (const double x : {1.0, -8388608.0, 0.25})
        EXPECT_EQ((*filter)(x), x);
}

TEST(CreateNormal, DelayIsHalfTheTapsOrOneSample) {
    for (const auto& [rate, freq, fir_delay] : designs) {
        EXPECT_EQ(create_normal<double>(Type::FIR, freq, rate)->delay(), fir_delay);
        EXPECT_EQ(create_normal<double>(Type::IIR, freq, rate)->delay(), 1u);
    }
}

TEST(CreateNormal, FirAnswersAnImpulseWithItsTaps) {
    for (const auto& [rate, freq, fir_delay] : designs) {
        const auto filter = create_normal<double>(Type::FIR, freq, rate);
        double x = 1.0;
        for (const double tap : *fir::get_coefs(freq, rate)) {
            EXPECT_EQ((*filter)(x), tap);
            x = 0.0;
        }
        EXPECT_EQ((*filter)(0.0), 0.0);
    }
}

TEST(CreateNormal, IirFirstAnswersWithTheProductOfItsGains) {
    for (const auto& [rate, freq, fir_delay] : designs) {
        double product = 1.0;
        for (const auto& coef : *iir::get_coefs(freq, rate))
            product = coef.gain * product;
        EXPECT_EQ((*create_normal<double>(Type::IIR, freq, rate))(1.0), product);
    }
}

TEST(CreateNormal, ABlockIsAnsweredAsOneByOne) {
    for (const Type type : {Type::None, Type::FIR, Type::IIR}) {
        SCOPED_TRACE(testing::Message() << type);
        const auto at_once = create_normal<double>(type, 19000, 48000);
        const auto one_by_one = create_normal<double>(type, 19000, 48000);
        for (int block = 0; block < 3; ++block) {
            std::vector<double> samples, answers;
            for (int i = 0; i < 100; ++i)
                samples.push_back((i * i + block) % 37 - 18);
            for (const double x : samples)
                answers.push_back((*one_by_one)(x));
            (*at_once)(samples);
            EXPECT_EQ(samples, answers);
        }
    }
}

TEST(CreateNormal, IirRunsItsSectionsInTableOrder) {
    const auto filter = create_normal<double>(Type::IIR, 19000, 48000);
    std::vector<vela::iir::BiQuad<double>> sections;
    const auto& coefs = *iir::get_coefs(38000, 96000);
    for (const auto& c : coefs)
        sections.emplace_back(c.b0, c.b1, c.b2, c.a1, c.a2);
    for (int t = 0; t < 200; ++t) {
        const double in = t % 17 * 1000.0 - 8000.0;
        double x = in;
        for (std::size_t i = 0; i < sections.size(); ++i)
            x = coefs[i].gain * sections[i](x);
        EXPECT_EQ((*filter)(in), x);
    }
}

TEST(CreateNormal, ASteadyLevelPasses) {
    for (const Type type : {Type::FIR, Type::IIR})
        for (const auto& [rate, freq, fir_delay] : designs) {
            const auto filter = create_normal<double>(type, freq, rate);
            double y = 0;
            for (int t = 0; t < 2000; ++t)
                y = (*filter)(1.0);
            EXPECT_NEAR(y, 1.0, 0.006) << type << " " << rate << " " << freq;
        }
}

TEST(CreateNormal, FiltersKeepTheirHistoryToThemselves) {
    const auto first = create_normal<double>(Type::FIR, 20000, 48000);
    const auto second = create_normal<double>(Type::FIR, 20000, 48000);
    (void)(*first)(1.0);
    EXPECT_EQ((*second)(0.0), 0.0);
}

TEST(CreateNormal, RatesShareADesignByTheRatioOfFrequencyToRate) {
    for (const Type type : {Type::FIR, Type::IIR}) {
        const auto at_88200 = create_normal<double>(type, 36000, 88200);
        const auto at_44100 = create_normal<double>(type, 18000, 44100);
        const auto at_32000 = create_normal<double>(type, 13061, 32000);
        for (int t = 0; t < 100; ++t) {
            const double x = t == 0 ? 1.0 : 0.0;
            const double y = (*at_88200)(x);
            EXPECT_EQ((*at_44100)(x), y);
            EXPECT_EQ((*at_32000)(x), y);
        }
    }
}

TEST(CreateNormal, NullWithoutADesign) {
    for (const Type type : {Type::FIR, Type::IIR}) {
        EXPECT_EQ(create_normal<double>(type, 18000, 32000), nullptr);
        EXPECT_EQ(create_normal<double>(type, 36000, 48000), nullptr);
        EXPECT_EQ(create_normal<double>(type, 0, 0), nullptr);
        for (const unsigned freq : {18000u, 36000u, 40000u, 80000u})
            EXPECT_EQ(create_normal<double>(type, freq, 192000), nullptr);
    }
    EXPECT_EQ(create_normal<double>(static_cast<Type>(3), 36000, 88200), nullptr);
}

}  // namespace
}  // namespace vela::filter::lowpass
