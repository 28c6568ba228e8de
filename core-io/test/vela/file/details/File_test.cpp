#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <thread>
#include <vector>
#include <vela/file/details/File.hpp>

namespace vela::file::details {
namespace {

using testing_support::TempFile;

TEST(File, ReadsAnywhere) {
    const TempFile on_disk("0123456789");
    File file(on_disk.name());
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.size(), 10u);
    EXPECT_EQ(file.name(), on_disk.name());
    for (const std::uint64_t offset : {0, 3, 7, 7, 0, 6}) {
        std::string buffer(3, '?');
        ASSERT_TRUE(file.read(buffer, offset));
        EXPECT_EQ(buffer, std::string("0123456789").substr(offset, 3));
    }
}

TEST(File, ReadsNothingBeyondItsEnd) {
    const TempFile on_disk("0123456789");
    File file(on_disk.name());
    std::string buffer(3, '?'), none;
    EXPECT_FALSE(file.read(buffer, 8));
    EXPECT_FALSE(file.read(buffer, 11));
    EXPECT_FALSE(file.read(buffer, UINT64_MAX));
    EXPECT_TRUE(file.read(none, 10));
    EXPECT_FALSE(file.read(none, 11));
    // A refused read is no error of the stream.
    EXPECT_TRUE(file.read(buffer, 7));
}

TEST(File, AFileThatShrinksUnderTheReaderFails) {
    const TempFile on_disk(std::string(100000, 'x'));
    File file(on_disk.name());
    on_disk.write("short");
    std::string buffer(50000, '?');
    EXPECT_FALSE(file.read(buffer, 0));
    buffer.resize(1);
    EXPECT_FALSE(file.read(buffer, 0));
}

TEST(File, AFolderOpensButNeverReads) {
    File folder{Name(testing::TempDir())};
    std::string buffer(4, '?');
    EXPECT_FALSE(folder.is_open() && folder.read(buffer, 0));
    EXPECT_FALSE(File(Name()).is_open());
}

TEST(File, ThreadsDoNotDisturbEachOther) {
    std::string bytes(60000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i / 3);
    const TempFile on_disk(bytes);
    File file(on_disk.name());
    std::array<bool, 4> same{};
    std::vector<std::thread> threads;
    for (std::size_t id = 0; id < same.size(); ++id)
        threads.emplace_back([&, id] {
            same[id] = true;
            std::string buffer(3, '?');
            for (std::uint64_t at = id * 3; at < bytes.size(); at += 12)
                same[id] = file.read(buffer, at) && buffer == bytes.substr(at, 3) && same[id];
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(same, (std::array<bool, 4>{true, true, true, true}));
}

}  // namespace
}  // namespace vela::file::details
