#include <chrono>
#include <cstddef>
#include <random>
#include <vela/dither/Pool.hpp>
#include <vela/numeric/wrap.hpp>
#include <vela/simd/widest.hpp>
#include <vela/thread/awake.hpp>

namespace vela::dither {

namespace {

std::uint32_t clock_seed() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(now.count());
}

// Away from zero the sum saturates.  Below it both sides are complemented instead of compared the
// other way round, so that the loop has one comparison and no branches.
int add_noise(int x, int noise, int min, int max) {
    const int sign = x >> 31;
    const int full_scale = x < 0 ? min : max;
    const int room = numeric::wrap_sub(full_scale, x);
    const bool leaves = x != 0 && (noise ^ sign) > (room ^ sign);
    return leaves ? full_scale : numeric::wrap_add(x, noise);
}

void add_noises(Range<int*> samples, const int* noise, int min, int max) {
    for (int& x : samples)
        x = add_noise(x, *noise++, min, max);
}

}  // namespace

Pool::Pool(unsigned bits, int mean, unsigned long width, unsigned long size)
    : rng_(clock_seed()),
      mean_(mean),
      rnds_(size),
      max_(static_cast<int>((std::int64_t{1} << (width - 1)) - 1)),
      min_(-max_ - 1) {
    generate_pool_(bits);
}

void Pool::generate_pool_(unsigned bits) {
    std::uniform_int_distribution draw(0, 1 << bits);
    for (int& noise : rnds_) {
        const int u = draw(rng_);
        const int v = draw(rng_);
        noise = numeric::wrap_add(mean_, u - v);
    }
}

// A frame that leaves less than two entries of the table over wraps the bound of the draw, so any
// number may come out; what does not fit is brought back into the table.
std::uint32_t Pool::generate_offset_in_rnds_(unsigned long count, unsigned long offset) const {
    const auto last = static_cast<std::uint32_t>(rnds_.size() - count - 1 - stride_);
    const auto fitting = static_cast<std::uint32_t>(rnds_.size() - count + 1);
    const auto lock = thread::lock_awake(mutex_);
    const auto drawn = std::uniform_int_distribution<std::uint32_t>(0, last)(rng_);
    return (drawn + static_cast<std::uint32_t>(offset % stride_)) % fitting;
}

bool Pool::operator()(Range<int*> samples, unsigned long offset) const {
    const std::size_t count = samples.size();
    if (count > rnds_.size()) return false;
    const int* const noise = rnds_.data() + generate_offset_in_rnds_(count, offset);
    simd::widest<add_noises>(samples, noise, min_, max_);
    return true;
}

}  // namespace vela::dither
