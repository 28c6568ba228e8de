#pragma once

#include <cstdint>

/// The size classes of the centers section: a header byte stands for a count of slots.
///
///     class     slots         from .. to   step
///       0 ..   4   2 c +   8     8 ..   16     2
///       5 ..  15   4 c          20 ..   60     4
///      16 ..  83   8 c -  64    64 ..  600     8
///      84 .. 255  16 c - 712   632 .. 3368    16
namespace vela::codec::zvk::details {

/// Slots of a size class.
[[nodiscard]] std::uint32_t nr_error_centers_per_index(std::uint32_t ix);

/// The smallest class with at least `count` slots.  Above 3368 it no longer fits the header byte.
[[nodiscard]] std::uint32_t error_center_index(std::uint32_t count);

}  // namespace vela::codec::zvk::details
