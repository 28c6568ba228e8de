#include <cstdint>
#include <vela/numeric/wrap.hpp>
#include <vela/pcm/shift.hpp>

namespace vela::pcm {

bool shift_left(unsigned n, audio::Frame& frame) {
    if (n > max_shift) return false;
    for (int& x : frame.write())
        x = numeric::wrap(static_cast<std::uint32_t>(x) << n);
    return true;
}

bool shift_right(unsigned n, Range<int*> samples) {
    if (n > max_shift) return false;
    for (int& x : samples)
        x >>= n;
    return true;
}

}  // namespace vela::pcm
