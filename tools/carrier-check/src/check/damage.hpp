#pragma once

#include <cstddef>
#include <string>
#include <vela/file/Name.hpp>

namespace check {

/// A block that does not decode, in one channel of a file.
struct Suspect {
    vela::file::Name file;
    std::size_t channel = 0;
    std::size_t frame_size = 0;
    std::size_t block = 0;
};

/// What happened to a carrier from this block on, in a few words, as far as its samples tell; empty
/// where they do not, as with a wrong bit or two in one block.
///
///     all samples zero                     silenced
///     block of another size there          wrong --frame-size
///     blocks start elsewhere               samples cut away or put in
///     low bits all zero                    converted to fewer bits
///     headers come back at another level   changed in level
///     headers mostly there                 dithered again
///     nothing of it left                   resampled, filtered, ..., or no carrier
[[nodiscard]] std::string explain_damage(const Suspect& suspect);

}  // namespace check
