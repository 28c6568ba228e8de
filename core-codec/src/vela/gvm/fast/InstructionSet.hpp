#pragma once

namespace vela::gvm::fast {

enum class InstructionSet { sse2, avx2, avx512 };

/// The best that this machine has.  Test builds take a lesser one, "sse2" or "avx2", from the
/// environment variable VELA_INSTRUCTION_SET.
[[nodiscard]] InstructionSet instruction_set();

}  // namespace vela::gvm::fast
