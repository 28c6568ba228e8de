#include <vela/filter/lowpass/find_design.hpp>

namespace vela::filter::lowpass {

namespace {

struct Row {
    unsigned sample_rate;
    unsigned freq;
    Design design;
};

constexpr Row rows[] = {
    {88200, 36000, Design::Rate88200Freq36000},
    {88200, 38000, Design::Rate88200Freq38000},
    {88200, 40000, Design::Rate88200Freq40000},
    {96000, 36000, Design::Rate96000Freq36000},
    {96000, 38000, Design::Rate96000Freq38000},
    {96000, 40000, Design::Rate96000Freq40000},
    // Half the rate, half the frequency.
    {44100, 18000, Design::Rate88200Freq36000},
    {44100, 19000, Design::Rate88200Freq38000},
    {44100, 20000, Design::Rate88200Freq40000},
    {48000, 18000, Design::Rate96000Freq36000},
    {48000, 19000, Design::Rate96000Freq38000},
    {48000, 20000, Design::Rate96000Freq40000},
    // 32000 / 88200 of the frequency, rounded down.
    {32000, 13061, Design::Rate88200Freq36000},
    {32000, 13787, Design::Rate88200Freq38000},
    {32000, 14512, Design::Rate88200Freq40000},
};

}  // namespace

std::optional<Design> find_design(unsigned freq, unsigned sample_rate) {
    for (const Row& row : rows)
        if (row.freq == freq && row.sample_rate == sample_rate) return row.design;
    return std::nullopt;
}

}  // namespace vela::filter::lowpass
