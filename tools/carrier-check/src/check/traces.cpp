#include <algorithm>
#include <array>
#include <check/traces.hpp>
#include <cmath>
#include <numeric>
#include <vector>
#include <vela/carrier/marks.hpp>

namespace check {

namespace {

// Frame size code, two reserved flags, and the flag that says that the block is encoded.
constexpr std::size_t nr_fixed_bits = 11;
constexpr std::uint32_t encoded = 0x20;

// In standard deviations of what chance would give; some 500 gains are tried.
constexpr double sure = 5.5;

std::vector<double> usual_gains() {
    std::vector<double> out = {1.0};
    for (int percent = 25; percent <= 400; ++percent)
        if (percent != 100) out.push_back(percent / 100.0);
    for (int tenths = -120; tenths <= 120; ++tenths)
        if (tenths != 0) out.push_back(std::pow(10.0, tenths / 200.0));
    return out;
}

std::array<int, vela::carrier::nr_marked_samples> undo(std::span<const int> samples, double gain) {
    std::array<int, vela::carrier::nr_marked_samples> out;
    for (std::size_t t = 0; t < out.size(); ++t)
        out[t] = static_cast<int>(std::lround(samples[t] / gain));
    return out;
}

/// How far the header bits that are left stand out of chance, in standard deviations; 0 if any of
/// them is wrong more often than right: what lies in a carrier repeats, also where a filter has
/// turned it into something else, so that some of them always look right.
double evidence_for(double gain, std::span<const int> samples, std::size_t frame_size) {
    const auto expected = static_cast<std::uint32_t>(frame_size / 16 - 1) << 8 | encoded;
    std::array<int, nr_fixed_bits> right{};
    int nr_blocks = 0;
    for (std::size_t at = 0; at + frame_size <= samples.size(); at += frame_size, ++nr_blocks) {
        const auto word = vela::carrier::word_on_line(undo(samples.subspan(at), gain), 2);
        for (std::size_t bit = 0; bit < right.size(); ++bit)
            right[bit] += static_cast<int>(~(word ^ expected) >> (15 - bit) & 1u);
    }
    const int all = nr_blocks * static_cast<int>(nr_fixed_bits);
    if (all == 0 || 2 * *std::ranges::min_element(right) < nr_blocks) return 0;
    return (2.0 * std::accumulate(right.begin(), right.end(), 0) - all) / std::sqrt(all);
}

}  // namespace

std::optional<double> find_gain(std::span<const int> samples, std::size_t frame_size) {
    std::optional<double> best;
    double most = sure;
    for (const double gain : usual_gains()) {
        const double evidence = evidence_for(gain, samples, frame_size);
        if (evidence <= most) continue;
        most = evidence;
        best = gain;
    }
    return best;
}

}  // namespace check
