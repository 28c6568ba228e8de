#pragma once

#include <string>

namespace app {

/// All layouts, a line each with all its names.
[[nodiscard]] std::string speaker_layout_help();

/// All channels, a line each with short and full name.
[[nodiscard]] std::string channel_names_help();

}  // namespace app
