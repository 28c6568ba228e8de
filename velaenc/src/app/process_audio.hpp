#pragma once

#include <app/Settings.hpp>
#include <app/profile/Interface.hpp>
#include <memory>
#include <vela/Profiler.hpp>
#include <vela/profiler/Stack.hpp>

namespace app {

using Profiler = vela::Profiler<const char*, vela::profiler::Stack>;

/// Runs all input audio through the profile, block by block: 0, or 1 for any failure.
[[nodiscard]] int process_audio(const std::shared_ptr<profile::Interface>& profile,
                                const Settings& settings, Profiler& profiler);

}  // namespace app
