#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace check {

/// By how much a carrier was made louder or softer, from what is left of the headers of its blocks.
///
/// The first 16 bits of a header lie on line 2 of the first 16 samples of a block, and 11 of them
/// are the same in every block.  A change of the lowest bits, such as dither of one step, leaves
/// most of them standing; a change of level does so once it is taken back.  The gains tried are
/// those that people set: tenths of a decibel, and percents.
///
/// Shape:  `samples` start with a block; the more blocks there are, the surer the answer.
/// Result: the factor, 1 if only the lowest bits changed; nothing where chance would do as well.
[[nodiscard]] std::optional<double> find_gain(std::span<const int> samples, std::size_t frame_size);

}  // namespace check
