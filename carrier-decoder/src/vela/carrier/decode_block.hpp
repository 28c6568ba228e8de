#pragma once

#include <span>
#include <string>
#include <vela/carrier/Block.hpp>

namespace vela::carrier {

/// Decodes one block of one carrier channel, and checks all of it to the last padding bit.
///
/// Shape:   `samples` is the whole block: 16 to 4096 samples in steps of 16, or 1000.
/// Units:   24-bit values, sign-extended.
/// Errors:  false, with one sentence in `why`, if anything is not as a block must be; `out` is then
///          undefined.  What is stricter than a player needs to be: the size class and the width of
///          the centers must be the smallest that do, every unused place for a center must read
///          ones, and every bit that stands for nothing must be zero.
/// Threads: any number at once.
[[nodiscard]] bool decode_block(Block& out, std::string& why, std::span<const int> samples);

}  // namespace vela::carrier
