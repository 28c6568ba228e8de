#include <algorithm>
#include <array>
#include <check/traces.hpp>
#include <cmath>
#include <numeric>
#include <set>
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

using Head = std::array<int, vela::carrier::nr_marked_samples>;

/// The first samples of all blocks.  Of equal ones, as in silence or a loop, one counts: what they
/// look like by chance they would all look like.
std::set<Head> heads_of(std::span<const int> samples, std::size_t frame_size) {
    std::set<Head> out;
    for (std::size_t at = 0; at + frame_size <= samples.size(); at += frame_size) {
        Head head;
        std::ranges::copy(samples.subspan(at, head.size()), head.begin());
        out.insert(head);
    }
    return out;
}

Head undo(Head head, double gain) {
    for (int& x : head)
        x = static_cast<int>(std::lround(x / gain));
    return head;
}

/// How far the header bits that are left stand out of chance, in standard deviations; 0 if any of
/// them is wrong more often than right: what lies in a carrier repeats, also where a filter has
/// turned it into something else, so that some of them always look right.
double evidence_for(double gain, const std::set<Head>& heads, std::uint32_t expected) {
    std::array<int, nr_fixed_bits> right{};
    for (const Head& head : heads) {
        const auto word = vela::carrier::word_on_line(undo(head, gain), 2);
        for (std::size_t bit = 0; bit < right.size(); ++bit)
            right[bit] += static_cast<int>(~(word ^ expected) >> (15 - bit) & 1u);
    }
    const auto all = static_cast<int>(heads.size() * nr_fixed_bits);
    if (2 * *std::ranges::min_element(right) < static_cast<int>(heads.size())) return 0;
    return (2.0 * std::accumulate(right.begin(), right.end(), 0) - all) / std::sqrt(all);
}

}  // namespace

std::optional<double> find_gain(std::span<const int> samples, std::size_t frame_size) {
    const auto expected = static_cast<std::uint32_t>(frame_size / 16 - 1) << 8 | encoded;
    const std::set<Head> heads = heads_of(samples, frame_size);
    std::optional<double> best;
    if (heads.empty()) return best;
    double most = sure;
    for (const double gain : usual_gains()) {
        const double evidence = evidence_for(gain, heads, expected);
        if (evidence <= most) continue;
        most = evidence;
        best = gain;
    }
    return best;
}

}  // namespace check
