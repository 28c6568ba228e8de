#pragma once

#include <string>

/// What this build is.
namespace info {

[[nodiscard]] const std::string& name();
[[nodiscard]] const std::string& version();
[[nodiscard]] const std::string& git_hash();
[[nodiscard]] const std::string& build_date();

}  // namespace info
