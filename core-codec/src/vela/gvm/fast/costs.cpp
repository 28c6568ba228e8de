#include <vela/gvm/fast/InstructionSet.hpp>
#include <vela/gvm/fast/costs_sets.hpp>

namespace vela::gvm::fast::costs {

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

}  // namespace vela::gvm::fast::costs
