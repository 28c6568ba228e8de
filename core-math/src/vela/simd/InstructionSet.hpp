#pragma once

#include <string_view>

namespace vela::simd {

enum class InstructionSet { sse2, avx2, avx512 };

/// Whether this machine has the set of that name, "sse2", "avx2" or "avx512"; false for other
/// names.
[[nodiscard]] bool machine_has(std::string_view name);

/// The best that this machine has.
///
/// Test builds take the one that the environment variable VELA_INSTRUCTION_SET names, if any.  If
/// the machine does not have it the process ends there, with a message: who forces a set would
/// otherwise test or time another one without knowing.
[[nodiscard]] InstructionSet instruction_set();

}  // namespace vela::simd
