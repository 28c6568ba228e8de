#pragma once

#include <app/profile/Interface.hpp>
#include <memory>
#include <string>

namespace app::profile {

/// The profile with that name, or null.
[[nodiscard]] std::shared_ptr<Interface> create(const std::string& name);

}  // namespace app::profile
