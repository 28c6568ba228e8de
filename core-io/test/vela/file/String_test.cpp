#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <vela/file/String.hpp>

namespace vela::file {
namespace {

using testing_support::TempFile;

TEST(String, CountsAndPatches) {
    const TempFile on_disk("what was there before is gone");
    {
        String out(on_disk.name());
        EXPECT_EQ(out.size(), 0u);
        out.append("RIFF????");
        EXPECT_TRUE(out.overwrite(4, "1234"));
        EXPECT_EQ(out.size(), 8u);
        out.append("data");
        EXPECT_EQ(out.size(), 12u);
    }
    EXPECT_EQ(on_disk.bytes(), "RIFF1234data");
}

TEST(String, APatchMakesNoFileLonger) {
    const TempFile on_disk;
    {
        String out(on_disk.name());
        out.append("abcd");
        EXPECT_FALSE(out.overwrite(1, "wxyz"));
        EXPECT_FALSE(out.overwrite(5, ""));
        EXPECT_FALSE(out.overwrite(UINT64_MAX, "ab"));
        EXPECT_TRUE(out.overwrite(4, ""));
        EXPECT_TRUE(out.overwrite(3, "D"));
    }
    EXPECT_EQ(on_disk.bytes(), "abcD");
}

TEST(String, AFileThatCannotBeCreatedIsWrittenToInVain) {
    String out{Name(testing::TempDir())};
    out.append("abcd");
    EXPECT_EQ(out.size(), 4u);
    EXPECT_TRUE(out.overwrite(0, "x"));
    EXPECT_FALSE(out.overwrite(4, "x"));
}

}  // namespace
}  // namespace vela::file
