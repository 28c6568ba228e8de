#include <gtest/gtest.h>

#include <vela/log/Settings.hpp>

namespace vela::log {
namespace {

TEST(LogSettings, ThePrefixReplacesTheWholeName) {
    EXPECT_EQ(Settings::filename(), "logging_settings.logcfg");
    Settings::set_prefix("bin/velaenc");
    EXPECT_EQ(Settings::filename(), "bin/velaenc.logcfg");
    Settings::set_prefix("");
    EXPECT_EQ(Settings::filename(), ".logcfg");
    Settings::set_prefix("logging_settings");
}

}  // namespace
}  // namespace vela::log
