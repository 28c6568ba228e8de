#pragma once

#include <cstddef>

namespace vela {

/// Bytes that processors hand on together: what different threads write lies apart by as much, and
/// no register of whole lines lies across two that begins with one.
inline constexpr std::size_t cache_line = 64;

}  // namespace vela
