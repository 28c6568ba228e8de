#pragma once

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <vela/codec/v3/lib/encode/Group.hpp>

/// Candidates for the tests of the stages.
namespace vela::codec::v3::encode {

inline Frame frame_of(const api::Channel& channel, const std::vector<int>& samples) {
    Frame frame(api::ChannelVariant(channel), samples.size());
    frame.bit_depth = 24;
    frame.set_data(samples.begin(), samples.end());
    return frame;
}

inline std::vector<int> noise(std::size_t count, unsigned seed, int peak = 1 << 20) {
    std::mt19937 engine(seed);
    std::vector<int> samples(count);
    for (int& x : samples)
        x = static_cast<int>(engine() % (2 * static_cast<unsigned>(peak))) - peak;
    return samples;
}

/// A tone with a little noise: few large deltas, so that there is something to cluster.
inline std::vector<int> music(std::size_t count, unsigned seed, double level = 1e6) {
    auto samples = noise(count, seed, 1 << 10);
    for (std::size_t t = 0; t < count; ++t)
        samples[t] +=
            static_cast<int>(level * std::sin(0.05 * (seed + 1) * static_cast<double>(t)));
    return samples;
}

/// The candidate of `Left` for a carrier of stereo, without dither.
inline Group group_of(std::uint32_t nr_bitlines, std::initializer_list<std::vector<int>> channels) {
    const api::Channel members[] = {api::channel::Left, api::channel::LeftSurround,
                                    api::channel::Center};
    const auto nr_samples = static_cast<std::int64_t>(channels.begin()->size());
    Group group =
        *Group::create(api::SpeakerLayout(0x37), api::SpeakerLayout(0x3), {0, nr_samples});
    group.nr_bitlines = nr_bitlines;
    group.dither = false;
    group.centers_max = 150;
    group.centers_start_2 = group.centers_start_3 = 20;
    group.frame.key = api::ChannelVariant(api::channel::Left);
    for (const auto& samples : channels) {
        const Frame frame = frame_of(members[group.origs.size()], samples);
        group.origs.push_back(frame);
        group.orig_attn[frame.key] = 0;
    }
    return group;
}

inline std::vector<int> samples_of(const Frame& frame) {
    return {frame.samples().begin(), frame.samples().end()};
}

}  // namespace vela::codec::v3::encode
