#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>
#include <support/ErrandHelpers.hpp>
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

TEST(String, WithErrandsAPieceIsWrittenByWhoeverHasTime) {
    const TempFile on_disk;
    thread::Errands errands;
    String out(on_disk.name(), &errands);
    out.append(std::string(bytes_per_piece + 5, 'a'));
    EXPECT_EQ(on_disk.bytes().size(), 0u);
    EXPECT_TRUE(errands.run_one());
    EXPECT_EQ(on_disk.bytes().size(), bytes_per_piece);
    EXPECT_FALSE(errands.run_one());
}

// Memory would grow with the file otherwise.
TEST(String, WithErrandsNoMoreThanOnePieceWaits) {
    const TempFile on_disk;
    thread::Errands errands;
    String out(on_disk.name(), &errands);
    for (std::size_t i = 1; i <= 5; ++i) {
        out.append(std::string(bytes_per_piece, 'a'));
        EXPECT_EQ(on_disk.bytes().size(), (i - 1) * bytes_per_piece);
    }
}

TEST(String, WithErrandsAFileThatCannotBeCreatedIsWrittenToInVain) {
    thread::Errands errands;
    String out{Name(testing::TempDir()), &errands};
    for (int i = 0; i < 3; ++i)
        out.append(std::string(bytes_per_piece, 'a'));
    EXPECT_EQ(out.size(), 3 * bytes_per_piece);
    EXPECT_TRUE(out.overwrite(0, "x"));
}

/// The parameter is how many threads run errands.
class StringThreads : public testing::TestWithParam<int> {};

// Pieces go side by side for several files, patches into what may be behind.
TEST_P(StringThreads, WriteTheSameBytes) {
    std::mt19937 random(5);
    const auto below = [&random](std::size_t n) { return random() % n; };
    std::string noise(4 * bytes_per_piece, '?');
    for (char& byte : noise)
        byte = static_cast<char>(random());
    thread::Errands errands;
    const testing_support::ErrandHelpers helpers(errands, GetParam());
    for (int round = 0; round < 8; ++round) {
        const std::array<TempFile, 3> on_disk;
        std::array<std::string, 3> expected;
        {
            std::array<std::unique_ptr<String>, 3> out;
            for (std::size_t i = 0; i < out.size(); ++i)
                out[i] = std::make_unique<String>(on_disk[i].name(), &errands);
            for (int step = 0; step < 60; ++step) {
                const std::size_t i = below(out.size());
                const std::size_t size = below(8) == 0 ? below(3 * bytes_per_piece) : below(20000);
                const std::string bytes = noise.substr(below(bytes_per_piece), size);
                if (below(10) != 0) {
                    out[i]->append(bytes);
                    expected[i] += bytes;
                } else if (bytes.size() <= expected[i].size()) {
                    const std::size_t at = below(expected[i].size() - bytes.size() + 1);
                    ASSERT_TRUE(out[i]->overwrite(at, bytes));
                    expected[i].replace(at, bytes.size(), bytes);
                }
                ASSERT_EQ(out[i]->size(), expected[i].size());
            }
        }
        for (std::size_t i = 0; i < expected.size(); ++i)
            ASSERT_TRUE(on_disk[i].bytes() == expected[i]) << "differs";
    }
}

INSTANTIATE_TEST_SUITE_P(Helpers, StringThreads, testing::Values(0, 1, 3));

}  // namespace
}  // namespace vela::file
