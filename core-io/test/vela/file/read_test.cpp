#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <vela/file/read.hpp>

namespace vela::file {
namespace {

using testing_support::TempFile;

TEST(Read, BringsEveryByte) {
    for (const std::size_t size : {0, 1, 4096, 1 << 20, (1 << 20) + 1}) {
        SCOPED_TRACE(size);
        std::string bytes(size, '\0');
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<char>(i * 7 + i / 256);
        const TempFile file(bytes);
        std::string out = "old";
        ASSERT_TRUE(read(out, file.name()));
        EXPECT_TRUE(out == bytes);
    }
}

TEST(Read, WhatIsNoFileGivesFalse) {
    std::string out;
    EXPECT_FALSE(read(out, TempFile().name()));
    EXPECT_FALSE(read(out, Name()));
    // A folder can be opened, but its length is nonsense.
    EXPECT_FALSE(read(out, Name(testing::TempDir())));
}

}  // namespace
}  // namespace vela::file
