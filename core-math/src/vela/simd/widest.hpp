#pragma once

#include <vela/simd/InstructionSet.hpp>

namespace vela::simd {

namespace details {

#if defined(__x86_64__)
// What the loop calls is compiled into this one function, and so for the newer set as well; what
// compilers leave outside of it stays as it is for everyone.
template <auto Loop, typename... Args>
[[gnu::target("avx2"), gnu::flatten]] auto with_avx2(Args... args) {
    return Loop(args...);
}
#endif

}  // namespace details

/// Calls a function that is a plain loop over samples, compiled for the widest registers of this
/// machine that such loops gain by, which are those of AVX2.
///
///     simd::widest<add_noise>(samples, noise, count);
///
/// What comes out is the same: each sample takes the same operations in the same order, and sums of
/// reals keep theirs.  Arguments go by value, so hand over spans, pointers and numbers: those that
/// the loop only reads are then nothing that it might have written.
template <auto Loop, typename... Args>
auto widest(Args... args) {
#if defined(__x86_64__)
    if (instruction_set() != InstructionSet::sse2) return details::with_avx2<Loop>(args...);
#endif
    return Loop(args...);
}

}  // namespace vela::simd
