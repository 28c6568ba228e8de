#pragma once

#include <string>
#include <vela/file/Name.hpp>

namespace vela::file {

/// Reads a whole file.  False if it cannot be opened, measured or read to its end (a folder, a
/// pipe); `out` is then undefined.
[[nodiscard]] bool read(std::string& out, const Name& name);

}  // namespace vela::file
