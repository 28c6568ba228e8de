#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vela/thread/processors.hpp>

namespace vela::thread {
namespace {

TEST(Processors, ThereIsAtLeastOne) {
    EXPECT_GE(nr_processors(), 1u);
}

#ifdef VELA_TEST_SWITCHES
TEST(Processors, TestsGetAsManyAsTheyAskFor) {
    const char* const before = std::getenv("VELA_PROCESSORS");
    const std::string kept = before ? before : "";
    setenv("VELA_PROCESSORS", "7", 1);
    EXPECT_EQ(nr_processors(), 7u);
    setenv("VELA_PROCESSORS", "0", 1);
    EXPECT_EQ(nr_processors(), 1u);
    if (before)
        setenv("VELA_PROCESSORS", kept.c_str(), 1);
    else
        unsetenv("VELA_PROCESSORS");
}
#endif

}  // namespace
}  // namespace vela::thread
