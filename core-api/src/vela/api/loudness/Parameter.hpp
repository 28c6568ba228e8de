#pragma once

#include <cstdint>

namespace vela::api::loudness {

/// What a loudness value measures.
enum class Parameter : std::uint32_t {
    ProgramLoudness,
    ProgramLoudnessRange,
    SpeechLoudness,
    MaximumTruePeak,
    ShortTermLoudness,
    MomentaryLoudness,
    None
};

}  // namespace vela::api::loudness
