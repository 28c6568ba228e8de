#pragma once

#include <string>

namespace vela::log {

/// Derives the name of a log settings file from the program's name.
///
/// Threads: set the prefix before others start.
class Settings {
public:
    /// The name becomes `prefix` followed by ".logcfg".
    static void set_prefix(const std::string& prefix);

    /// "logging_settings.logcfg" until a prefix is set.  The program reads no such file.
    [[nodiscard]] static const std::string& filename();

private:
    static std::string& filename_();
};

}  // namespace vela::log
