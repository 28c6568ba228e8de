#include <limits>
#include <vela/gvm/fast/sieve_sets.hpp>
#include <vela/simd/InstructionSet.hpp>

namespace vela::gvm::fast::sieve {

using simd::instruction_set;
using simd::InstructionSet;

float slack(std::size_t nr_deltas, std::size_t axes, double largest) {
    const auto n = static_cast<double>(nr_deltas);
    if (n * largest >= 0x1p53) return std::numeric_limits<float>::infinity();
    return static_cast<float>(static_cast<double>(axes) * largest * largest *
                              (72 * 0x1p-44 + 3 * n * 0x1p-48));
}

template <>
const Functions<1>& functions<1>() {
#if defined(__x86_64__)
    if (instruction_set() == InstructionSet::avx512) return avx512::one;
    if (instruction_set() == InstructionSet::avx2) return avx2::one;
#endif
    return sse2::one;
}

template <>
const Functions<2>& functions<2>() {
#if defined(__x86_64__)
    if (instruction_set() == InstructionSet::avx512) return avx512::two;
    if (instruction_set() == InstructionSet::avx2) return avx2::two;
#endif
    return sse2::two;
}

}  // namespace vela::gvm::fast::sieve
