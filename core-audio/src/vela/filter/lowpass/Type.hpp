#pragma once

#include <cstdint>
#include <ostream>

namespace vela::filter::lowpass {

/// How a lowpass is built.
enum class Type : std::uint32_t { None = 0, FIR = 1, IIR = 2 };

/// The name, or "{type: 7}" for a value without one.
std::ostream& operator<<(std::ostream& out, Type type);

}  // namespace vela::filter::lowpass
