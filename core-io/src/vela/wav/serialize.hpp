#pragma once

#include <vela/file/String.hpp>
#include <vela/riff/Chunk.hpp>
#include <vela/wav/Format.hpp>

namespace vela::wav {

/// Writes `format` as a "fmt " chunk inside of `chunk`: 16 bytes, and the extension only if the
/// format is extensible.  A channel mask in plain PCM is thus not written.
void serialize(riff::Chunk<file::String>& chunk, const Format& format);

}  // namespace vela::wav
