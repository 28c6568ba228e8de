#include <array>
#include <cstdint>
#include <vela/loudness/codec/encode.hpp>
#include <vela/numeric/truncate.hpp>

namespace vela::loudness::codec {

namespace {

/// In tenths: what brings the low end of the range to code 0, and the code of its high end.
struct Scale {
    std::uint32_t bias;
    std::uint32_t max_code;
};

// By `api::loudness::Parameter`.
constexpr std::array<Scale, 6> scales{{
    {350, 330},    // ProgramLoudness
    {0, 300},      // ProgramLoudnessRange
    {350, 330},    // SpeechLoudness
    {10, 50},      // MaximumTruePeak
    {1000, 1000},  // ShortTermLoudness
    {1000, 1000},  // MomentaryLoudness
}};

// Unsigned, so that what lies below the range wraps far above it and one test catches both sides.
bool quantise(std::uint32_t& code, const Scale& scale, double value) {
    code = static_cast<std::uint32_t>(numeric::truncate_to_int32(value * 10.0)) + scale.bias;
    return code <= scale.max_code;
}

/// A flag and a code in 11 bits; an absent value is all zeros.
bool quantise_optional(std::uint32_t& bits, const Scale& scale, const double* value) {
    constexpr std::uint32_t present = 1u << 10;
    bits = 0;
    if (!value) return true;
    std::uint32_t code = 0;
    if (!quantise(code, scale, *value)) return false;
    bits = present | code;
    return true;
}

}  // namespace

bool encode(unsigned& out, api::loudness::Parameter parameter, const double& value,
            const double* first, const double* second) {
    const auto ix = static_cast<std::uint32_t>(parameter);
    if (ix >= scales.size()) return false;

    std::uint32_t value_bits = 0;
    std::uint32_t first_bits = 0;
    std::uint32_t second_bits = 0;
    if (!quantise(value_bits, scales[ix], value)) return false;
    if (!quantise_optional(first_bits, scales[ix], first)) return false;
    if (!quantise_optional(second_bits, scales[ix], second)) return false;
    out = value_bits << 22 | first_bits << 11 | second_bits;
    return true;
}

}  // namespace vela::loudness::codec
