#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <vela/file/exist.hpp>

namespace vela::file {
namespace {

using testing_support::TempFile;

TEST(Exist, IsWhetherItOpens) {
    EXPECT_TRUE(exist(TempFile("").name()));
    EXPECT_FALSE(exist(TempFile().name()));
    EXPECT_FALSE(exist(Name()));
}

TEST(Exist, AFileWithoutPermissionCountsAsAbsent) {
    if (geteuid() == 0) GTEST_SKIP() << "nothing is unreadable for the super user";
    const TempFile file("x");
    std::filesystem::permissions(file.path(), std::filesystem::perms::none);
    EXPECT_FALSE(exist(file.name()));
}

}  // namespace
}  // namespace vela::file
