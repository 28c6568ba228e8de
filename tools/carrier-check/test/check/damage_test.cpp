#include <gtest/gtest.h>

#include <algorithm>
#include <check/damage.hpp>
#include <cmath>
#include <functional>
#include <random>

#include "support/Folder.hpp"
#include "support/answers.hpp"

namespace check {
namespace {

using Samples = std::vector<int>;
constexpr std::size_t frame = support::long_carrier_frame;

struct Case {
    const char* name;
    std::function<void(Samples&)> damage;
    std::size_t block;
    const char* told;
};

class ExplainDamage : public testing::TestWithParam<Case> {};

TEST_P(ExplainDamage, SaysWhatHappened) {
    const support::Folder folder;
    Samples samples = support::long_carrier();
    GetParam().damage(samples);
    const Suspect suspect{.file = folder.write_wav("a.wav", {samples}),
                          .channel = 0,
                          .frame_size = frame,
                          .block = GetParam().block};
    EXPECT_EQ(explain_damage(suspect), GetParam().told);
}

template <typename Change>
auto each(Change change) {
    return [change](Samples& samples) {
        for (int& x : samples)
            x = change(x);
    };
}

auto erase(std::size_t at, std::size_t count) {
    return [=](Samples& samples) {
        const auto from = samples.begin() + static_cast<std::ptrdiff_t>(at);
        samples.erase(from, from + static_cast<std::ptrdiff_t>(count));
    };
}

void dither(Samples& samples) {
    std::mt19937 engine(1);
    for (int& x : samples)
        x += static_cast<int>(engine() % 3) - 1;
}

void resample(Samples& samples) {
    Samples out;
    for (double at = 0; at + 1 < static_cast<double>(samples.size()); at += 48000.0 / 44100.0) {
        const auto t = static_cast<std::size_t>(at);
        const double part = at - static_cast<double>(t);
        out.push_back(
            static_cast<int>(std::lround(samples[t] * (1 - part) + samples[t + 1] * part)));
    }
    samples = out;
}

constexpr const char* no_trace =
    "no block follows, nor any trace of one: it was resampled, filtered, changed in level, or is "
    "no carrier of blocks of 512 samples";

INSTANTIATE_TEST_SUITE_P(
    All, ExplainDamage,
    testing::Values(
        Case{"OneWrongBit", [](Samples& x) { x[5 * frame + 9] ^= 1 << 20; }, 5, ""},
        Case{"WrongBitInTheFirst", [](Samples& x) { x[9] ^= 1 << 20; }, 0, ""},
        Case{"WrongBitInTheLast", [](Samples& x) { x[31 * frame] ^= 1; }, 31, ""},
        Case{"CutAtTheStart", erase(0, 100), 0,
             "it was cut or moved: blocks start at sample 412, as if the first 100 samples of one "
             "were missing"},
        Case{"MovedBack", [](Samples& x) { x.insert(x.begin(), 10, 0); }, 0,
             "it was cut or moved: blocks start at sample 10, as if the first 502 samples of one "
             "were missing"},
        Case{"CutInTheMiddle", erase(3 * frame + 500, 7), 3,
             "it was cut in the middle: blocks go on at sample 2041, as if 7 samples were missing "
             "or 505 put in"},
        Case{"CutAfterADamagedBlock",
             [](Samples& x) {
                 erase(4 * frame, 5)(x);
                 x[3 * frame] ^= 1;
             },
             3,
             "it was cut in the middle: blocks go on at sample 2555, as if 5 samples were "
             "missing or 507 put in"},
        Case{"Silenced", each([](int) { return 0; }), 0, "all samples are zero: it was silenced"},
        Case{"SilencedFromThere", [](Samples& x) { std::fill(x.begin() + 6 * frame, x.end(), 0); },
             6, "all samples are zero: it was silenced"},
        Case{"Cut16Bits", each([](int x) { return x / 256 * 256; }), 0,
             "it was converted to 16 bits, which takes the record away"},
        Case{"Cut20Bits", each([](int x) { return x / 16 * 16; }), 0,
             "it was converted to 20 bits, which takes the record away"},
        Case{"Twice", each([](int x) { return std::clamp(2 * x, -0x800000, 0x7FFFFF); }), 0,
             "it was changed in level, by +6.02 dB"},
        Case{"ThreeDecibelsLess", each([](int x) { return int(std::lround(x * 0.70794578)); }), 0,
             "it was changed in level, by -3.00 dB"},
        Case{"DitheredAgain", dither, 0,
             "its lowest bits were changed in every block: it was dithered again"},
        Case{"Resampled", resample, 0, no_trace}),
    [](const auto& param) { return param.param.name; });

TEST(ExplainDamage, KnowsA16BitFile) {
    const support::Folder folder;
    Samples samples = support::long_carrier();
    for (int& x : samples)
        x >>= 8;
    EXPECT_EQ(explain_damage({folder.write_wav("a.wav", {samples}, 16), 0, frame, 0}),
              "it was converted to 16 bits, which takes the record away");
}

TEST(ExplainDamage, TellsTheBlockSizeThatIsThere) {
    const support::Folder folder;
    const auto file = folder.write_wav("a.wav", {support::long_carrier()});
    EXPECT_EQ(explain_damage({file, 0, 1024, 0}),
              "a block of 512 samples starts there: --frame-size 512 may be right");
}

TEST(ExplainDamage, LooksAtTheChannelOfAnInterleavedFile) {
    const support::Folder folder;
    Samples damaged = support::long_carrier();
    erase(0, 16)(damaged);
    damaged.resize(damaged.size() + 16);
    const auto file = folder.write_wav("a.wav", {support::long_carrier(), damaged});
    EXPECT_EQ(explain_damage({file, 1, frame, 0}),
              "it was cut or moved: blocks start at sample 496, as if the first 16 samples of one "
              "were missing");
}

TEST(ExplainDamage, HasNothingToSayOfASingleBlock) {
    const support::Folder folder;
    Samples samples = support::long_carrier();
    samples.resize(frame);
    samples[0] ^= 1;
    EXPECT_EQ(explain_damage({folder.write_wav("a.wav", {samples}), 0, frame, 0}), "");
}

}  // namespace
}  // namespace check
