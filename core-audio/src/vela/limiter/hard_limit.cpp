#include <algorithm>
#include <vela/limiter/hard_limit.hpp>

namespace vela::limiter {

bool hard_limit(audio::Frame& frame, unsigned bits) {
    if (bits > 32) return false;
    if (bits == 32) return true;
    const int high = bits == 0 ? 0 : static_cast<int>((1u << (bits - 1)) - 1);
    const int low = bits == 0 ? 0 : -high - 1;
    for (int& x : frame.write())
        x = std::clamp(x, low, high);
    return true;
}

}  // namespace vela::limiter
