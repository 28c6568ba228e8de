#pragma once

#include <vela/file/Name.hpp>

namespace vela::file {

/// Whether the file can be opened for reading; one without permission counts as absent.
[[nodiscard]] bool exist(const Name& name);

}  // namespace vela::file
