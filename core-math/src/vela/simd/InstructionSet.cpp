#include <cstdio>
#include <cstdlib>
#include <string>
#include <vela/simd/InstructionSet.hpp>

namespace vela::simd {

namespace {

constexpr struct {
    const char* name;
    InstructionSet set;
} best_first[] = {{"avx512", InstructionSet::avx512},
                  {"avx2", InstructionSet::avx2},
                  {"sse2", InstructionSet::sse2}};

std::string forced_name() {
#ifdef VELA_TEST_SWITCHES
    if (const char* const name = std::getenv("VELA_INSTRUCTION_SET")) return name;
#endif
    return "";
}

InstructionSet choose() {
    const std::string forced = forced_name();
    for (const auto& [name, set] : best_first)
        if (machine_has(name) && (forced.empty() || forced == name)) return set;

    std::fprintf(stderr, "VELA_INSTRUCTION_SET is \"%s\", but this machine has", forced.c_str());
    for (const auto& [name, set] : best_first)
        if (machine_has(name)) std::fprintf(stderr, " %s", name);
    std::fputc('\n', stderr);
    std::_Exit(EXIT_FAILURE);  // other threads may be at work, so that nothing can be torn down
}

}  // namespace

bool machine_has(std::string_view name) {
#if defined(__x86_64__)
    if (name == "avx2") return __builtin_cpu_supports("avx2");
    if (name == "avx512") return __builtin_cpu_supports("avx512f");
#endif
    return name == "sse2";
}

InstructionSet instruction_set() {
    static const InstructionSet set = choose();
    return set;
}

}  // namespace vela::simd
