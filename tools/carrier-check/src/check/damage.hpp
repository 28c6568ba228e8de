#pragma once

#include <string>
#include <vela/file/Name.hpp>

namespace check {

/// What happened to a carrier of which a block does not decode, in a few words, as far as its
/// samples tell; empty where they do not.
///
///     low 8 bits all zero          converted to 16 bits
///     blocks start elsewhere       cut at its start
///     no sync word anywhere        resampled, level-changed, or dithered again
[[nodiscard]] std::string explain_damage(const vela::file::Name& name, std::size_t channel,
                                         std::size_t frame_size);

}  // namespace check
