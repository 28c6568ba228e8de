#include <algorithm>
#include <vela/limiter/hard_limit.hpp>
#include <vela/numeric/all_fit.hpp>

namespace vela::limiter {

bool hard_limit(audio::Frame& frame, unsigned bits) {
    if (bits > 32) return false;
    // Mostly there is nothing to do, and shared samples stay shared.
    if (bits > 0 && numeric::all_fit(frame.samples(), bits)) return true;
    const int high = bits == 0 ? 0 : static_cast<int>((1u << (bits - 1)) - 1);
    const int low = bits == 0 ? 0 : -high - 1;
    for (int& x : frame.write())
        x = std::clamp(x, low, high);
    return true;
}

}  // namespace vela::limiter
