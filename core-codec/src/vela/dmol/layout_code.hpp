#pragma once

#include <cstdint>
#include <vela/api/SpeakerLayout.hpp>

namespace vela::dmol {

/// The operand of opcode `InputLayout`: by which number a decoder knows `input`.
///
/// False, with `code` untouched, for an input without a carrier, and for a carrier other than the
/// one that `input` folds into: a decoder that rebuilds `input` counts on that carrier.  For mono
/// and the two test mixes the carrier is not looked at.
[[nodiscard]] bool layout_code(std::uint32_t& code, const api::SpeakerLayout& input,
                               const api::SpeakerLayout& carrier);

}  // namespace vela::dmol
