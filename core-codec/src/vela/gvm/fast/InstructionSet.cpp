#include <vela/gvm/fast/InstructionSet.hpp>

#ifdef VELA_TEST_SWITCHES
#include <cstdlib>
#include <string_view>
#endif

namespace vela::gvm::fast {

namespace {

InstructionSet best_set() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f")) return InstructionSet::avx512;
    if (__builtin_cpu_supports("avx2")) return InstructionSet::avx2;
#endif
    return InstructionSet::sse2;
}

InstructionSet choose() {
    const InstructionSet best = best_set();
#ifdef VELA_TEST_SWITCHES
    const char* const forced = std::getenv("VELA_INSTRUCTION_SET");
    const std::string_view name = forced ? forced : "";
    if (name == "sse2") return InstructionSet::sse2;
    if (name == "avx2" && best != InstructionSet::sse2) return InstructionSet::avx2;
#endif
    return best;
}

}  // namespace

InstructionSet instruction_set() {
    static const InstructionSet set = choose();
    return set;
}

}  // namespace vela::gvm::fast
