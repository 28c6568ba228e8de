#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <vector>

/// The mix of two or three channels, written as its definition reads: what each channel adds at
/// each sample, which is just what must be rebuilt.
namespace vela::carrier::support {

using Signal = std::vector<int>;

struct Mixed {
    Signal mix;
    std::vector<int> seeds;
    std::vector<Signal> rebuilt;  ///< what must come out again, one signal a channel
};

/// Two or three channels of at least 6 samples.
[[nodiscard]] Mixed mix(const std::vector<Signal>& channels,
                        const std::vector<std::array<int, 2>>& centers,
                        const std::vector<std::uint32_t>& ixs);

/// Values from -limit to limit.
[[nodiscard]] Signal noise(std::mt19937& engine, std::size_t length, int limit);

/// Indices below `count`; the highest one occurs.
[[nodiscard]] std::vector<std::uint32_t> random_ixs(std::mt19937& engine, std::size_t length,
                                                    std::uint32_t count);

}  // namespace vela::carrier::support
