#include <vela/log/Settings.hpp>

namespace vela::log {

void Settings::set_prefix(const std::string& prefix) {
    filename_() = prefix + ".logcfg";
}

const std::string& Settings::filename() {
    return filename_();
}

std::string& Settings::filename_() {
    static std::string filename = "logging_settings.logcfg";
    return filename;
}

}  // namespace vela::log
