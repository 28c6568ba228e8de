#pragma once

#include <string>
#include <vela/file/Name.hpp>

namespace check {

/// Why a file is no WAV file whose samples can be used, in one sentence that names it; empty if its
/// structure is sound.
///
/// A writer fills the lengths in when it is done.  So a run that was killed, or whose disk was
/// full, leaves a header that tells of no samples with samples behind it; a copy that was cut short
/// leaves a header that tells of more than there are.
[[nodiscard]] std::string explain_file(const vela::file::Name& name);

}  // namespace check
