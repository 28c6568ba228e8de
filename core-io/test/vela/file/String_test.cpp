#include <gtest/gtest.h>

#include <random>
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

constexpr std::size_t bytes_per_piece = 1 << 16;

TEST(String, GoesToTheFileInWholePieces) {
    const TempFile on_disk;
    String out(on_disk.name());
    out.append(std::string(bytes_per_piece - 1, 'a'));
    EXPECT_EQ(on_disk.bytes().size(), 0u);
    out.append("bc");
    EXPECT_EQ(on_disk.bytes(), std::string(bytes_per_piece - 1, 'a') + 'b');
}

// Patches go behind what is not at the file yet, and into it.
TEST(String, PiecesAndPatchesMakeTheBytesThatWereMeant) {
    std::mt19937 random(5);
    const auto below = [&random](std::size_t n) { return random() % n; };
    std::string noise(4 * bytes_per_piece, '?');
    for (char& byte : noise)
        byte = static_cast<char>(random());
    for (int round = 0; round < 8; ++round) {
        const TempFile on_disk;
        std::string expected;
        {
            String out(on_disk.name());
            for (int step = 0; step < 60; ++step) {
                const std::size_t size = below(8) == 0 ? below(3 * bytes_per_piece) : below(20000);
                const std::string bytes = noise.substr(below(bytes_per_piece), size);
                if (below(10) != 0) {
                    out.append(bytes);
                    expected += bytes;
                } else if (bytes.size() <= expected.size()) {
                    const std::size_t at = below(expected.size() - bytes.size() + 1);
                    ASSERT_TRUE(out.overwrite(at, bytes));
                    expected.replace(at, bytes.size(), bytes);
                }
                ASSERT_EQ(out.size(), expected.size());
            }
        }
        ASSERT_TRUE(on_disk.bytes() == expected) << "differs";
    }
}

}  // namespace
}  // namespace vela::file
