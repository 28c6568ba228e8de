#pragma once

#include <initializer_list>
#include <vector>
#include <vela/audio/Frame.hpp>

namespace vela::audio {

/// A frame without a channel, for tests that look at samples alone.
inline Frame frame_of(std::initializer_list<int> samples) {
    Frame frame(samples.size());
    frame.set_data(samples.begin(), samples.end());
    return frame;
}

inline std::vector<int> samples_of(const Frame& frame) {
    return {frame.samples().begin(), frame.samples().end()};
}

}  // namespace vela::audio
