#include <gtest/gtest.h>

#include <stdexcept>
#include <vela/OnRAII.hpp>

namespace vela {
namespace {

bool leave_early(bool early, int& calls) {
    const OnRAII count([&] { ++calls; });
    if (early) return false;
    EXPECT_EQ(calls, 0);
    return true;
}

TEST(OnRAII, RunsOnceOnEveryWayOut) {
    int calls = 0;
    EXPECT_TRUE(leave_early(false, calls));
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(leave_early(true, calls));
    EXPECT_EQ(calls, 2);
    try {
        const OnRAII count([&] { ++calls; });
        throw std::runtime_error("out");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(calls, 3);
}

}  // namespace
}  // namespace vela
