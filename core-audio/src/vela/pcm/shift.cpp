#include <cstdint>
#include <vela/numeric/wrap.hpp>
#include <vela/pcm/shift.hpp>
#include <vela/simd/widest.hpp>

namespace vela::pcm {

namespace {

void shift_all_left(std::span<int> samples, unsigned n) {
    for (int& x : samples)
        x = numeric::wrap(static_cast<std::uint32_t>(x) << n);
}

void shift_all_right(Range<int*> samples, unsigned n) {
    for (int& x : samples)
        x >>= n;
}

}  // namespace

bool shift_left(unsigned n, audio::Frame& frame) {
    if (n > max_shift) return false;
    simd::widest<shift_all_left>(frame.write(), n);
    return true;
}

bool shift_right(unsigned n, Range<int*> samples) {
    if (n > max_shift) return false;
    simd::widest<shift_all_right>(samples, n);
    return true;
}

}  // namespace vela::pcm
