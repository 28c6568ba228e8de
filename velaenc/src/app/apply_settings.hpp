#pragma once

#include <app/Settings.hpp>
#include <app/profile/Interface.hpp>
#include <memory>

namespace app {

/// Carries the settings into the profile; 0, or 1 after printing what was refused.
///
/// The naming schema is set here, process-wide, so that input channels on the command line always
/// go by the names of the first schema.
[[nodiscard]] int apply_settings(const std::shared_ptr<profile::Interface>& profile,
                                 const Settings& settings);

}  // namespace app
