#include <vela/gvm/fast/sieve_sets.hpp>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vela::gvm::fast::sieve::sse2 {

namespace {

#define LANES 4
#include "sieve_lanes.inc"

}  // namespace

const Functions<1> one = table<1>;
const Functions<2> two = table<2>;

}  // namespace vela::gvm::fast::sieve::sse2
