#include <gtest/gtest.h>

#include <vela/filter/lowpass/gain_db.hpp>
#include <vela/filter/lowpass/iir/get_coefs.hpp>

namespace vela::filter::lowpass::iir {
namespace {

struct Row {
    unsigned rate, freq;
    std::size_t section;
    Coef coef;
};

// clang-format off
constexpr Row rows[] = {
    // rate, freq, section, {b0, b1, b2, a1, a2, gain}
    {88200, 36000, 0, {1.0, 1.9262065963380297, 1.0, 1.3454279208259492, 0.6591364918695206, 1.7536988938378848}},
    {88200, 36000, 1, {1.0, 1.9888608765783402, 1.0, 0.8031691285234982, 0.22342601499427708, 6.791463189233173}},
    {88200, 36000, 2, {1.0, 1.8767379248920801, 1.0, 1.6394822637323117, 0.9116140671290753, 0.029730629893292143}},
    {88200, 38000, 0, {1.0, 1.9588336487608224, 1.0, 1.536413921926303, 0.7248027975228365, 1.8878134008319887}},
    {88200, 38000, 1, {1.0, 1.9938294713594629, 1.0, 1.0509034674878033, 0.3232964075072938, 7.946447219400999}},
    {88200, 38000, 2, {1.0, 1.9308518702124078, 1.0, 1.7742812715554463, 0.9313953460919218, 0.030597711028665108}},
    {88200, 40000, 0, {1.0, 1.9816207467830176, 1.0, 1.7122698843887887, 0.8023963907004728, 2.022883448181163}},
    {88200, 40000, 1, {1.0, 1.997258501969515, 1.0, 1.3266918220756805, 0.4690797265768242, 9.349420408077528}},
    {88200, 40000, 2, {1.0, 1.9690066560595554, 1.0, 1.8805711735945323, 0.9527171150464487, 0.03134712782787112}},
    {96000, 36000, 0, {1.0, 1.8587378327786785, 1.0, 1.048180201297409, 0.5833466358357785, 1.562820818202237}},
    {96000, 36000, 1, {1.0, 1.9783607360397988, 1.0, 0.48198315867084424, 0.13516436114597635, 5.433638254012115}},
    {96000, 36000, 2, {1.0, 1.7667275562675002, 1.0, 1.3960959255971555, 0.8859910664527252, 0.028280948988280798}},
    {96000, 38000, 0, {1.0, 1.9040144403534747, 1.0, 1.236905971768186, 0.6282338398575676, 1.681825997007149}},
    {96000, 38000, 1, {1.0, 1.985441098298945, 1.0, 0.6785831100539405, 0.18378259449148746, 6.246457843099859}},
    {96000, 38000, 2, {1.0, 1.8402740987988488, 1.0, 1.5550798233153467, 0.9015978412876292, 0.02921492394726525}},
    {96000, 40000, 0, {1.0, 1.9396476412906045, 1.0, 1.4185061272147979, 0.682397776047405, 1.8037551517314676}},
    {96000, 40000, 1, {1.0, 1.99091620740544, 1.0, 0.8930847611175663, 0.2563910108253819, 7.1995472707242305}},
    {96000, 40000, 2, {1.0, 1.8989575173268258, 1.0, 1.6932216659379493, 0.9188345073853872, 0.03006866124289224}},
};
// clang-format on

TEST(IirCoefs, EverySection) {
    for (const Row& row : rows) {
        const auto* coefs = get_coefs(row.freq, row.rate);
        ASSERT_NE(coefs, nullptr);
        ASSERT_EQ(coefs->size(), 3u);
        EXPECT_EQ((*coefs)[row.section], row.coef) << row.rate << " " << row.freq;
    }
}

double gain_at(const std::vector<Coef>& coefs, double freq, double rate) {
    const auto z = delay_at(freq, rate);
    std::complex<double> response = 1.0;
    for (const Coef& c : coefs)
        response *= c.gain * (c.b0 + c.b1 * z + c.b2 * z * z) / (1.0 + c.a1 * z + c.a2 * z * z);
    return gain_db(response);
}

TEST(IirCoefs, RippleOfATwentiethOfADecibel) {
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.rate << " " << row.freq);
        const auto& coefs = *get_coefs(row.freq, row.rate);
        EXPECT_NEAR(gain_at(coefs, 0, row.rate), -0.05, 1e-6);
        for (double freq = 0; freq <= row.freq; freq += 100)
            EXPECT_NEAR(gain_at(coefs, freq, row.rate), -0.025, 0.0251) << freq;
    }
}

TEST(IirCoefs, SixtyDecibelsDownSoonAboveTheFrequency) {
    for (const Row& row : rows) {
        const auto& coefs = *get_coefs(row.freq, row.rate);
        const double down =
            first_below(-60, row.freq, [&](double f) { return gain_at(coefs, f, row.rate); });
        EXPECT_GE(down - row.freq, 1550) << row.rate << " " << row.freq;
        EXPECT_LE(down - row.freq, 4400) << row.rate << " " << row.freq;
    }
}

TEST(IirCoefs, LookupFollowsTheRatioOfFrequencyToRate) {
    EXPECT_EQ(get_coefs(18000, 44100), get_coefs(36000, 88200));
    EXPECT_EQ(get_coefs(14512, 32000), get_coefs(40000, 88200));
    EXPECT_EQ(get_coefs(18000, 32000), nullptr);
    EXPECT_EQ(get_coefs(36000, 192000), nullptr);
}

}  // namespace
}  // namespace vela::filter::lowpass::iir
