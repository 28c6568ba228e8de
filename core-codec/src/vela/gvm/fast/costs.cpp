#include <vela/gvm/fast/costs_sets.hpp>

#ifdef VELA_TEST_SWITCHES
#include <cstdlib>
#include <string_view>
#endif

namespace vela::gvm::fast::costs {

namespace {

enum class Set { sse2, avx2, avx512 };

Set best_set() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f")) return Set::avx512;
    if (__builtin_cpu_supports("avx2")) return Set::avx2;
#endif
    return Set::sse2;
}

Set chosen_set() {
    const Set best = best_set();
#ifdef VELA_TEST_SWITCHES
    const char* const forced = std::getenv("VELA_INSTRUCTION_SET");
    const std::string_view name = forced ? forced : "";
    if (name == "sse2") return Set::sse2;
    if (name == "avx2" && best != Set::sse2) return Set::avx2;
#endif
    return best;
}

const Set set = chosen_set();

}  // namespace

template <>
const Functions<1>& functions<1>() {
#if defined(__x86_64__)
    if (set == Set::avx512) return avx512::one;
    if (set == Set::avx2) return avx2::one;
#endif
    return sse2::one;
}

template <>
const Functions<2>& functions<2>() {
#if defined(__x86_64__)
    if (set == Set::avx512) return avx512::two;
    if (set == Set::avx2) return avx2::two;
#endif
    return sse2::two;
}

}  // namespace vela::gvm::fast::costs
