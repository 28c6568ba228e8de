#pragma once

#include <array>
#include <span>
#include <vector>

namespace vela::mix {

/// One channel's samples in time order.
using Samples = std::span<const int>;

/// What a cluster adds to a prediction, by cluster index: one value per sample in a mix of two
/// channels, two values in a mix of three.
using Centers1 = std::vector<std::array<int, 1>>;
using Centers2 = std::vector<std::array<int, 2>>;

}  // namespace vela::mix
