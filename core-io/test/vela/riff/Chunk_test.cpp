#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/file/String.hpp>
#include <vela/riff/Chunk.hpp>

namespace vela::riff {
namespace {

using namespace testing_support;
using FileChunk = Chunk<file::String>;

/// What `write` makes of an empty file.
template <typename Write>
std::string written(Write write) {
    const TempFile on_disk;
    {
        file::String sink(on_disk.name());
        write(sink);
    }
    return on_disk.bytes();
}

TEST(Chunk, LengthsCountThePadBytesOfInnerChunksOnly) {
    const auto bytes = written([](file::String& sink) {
        FileChunk outer(sink, "RIFF");
        EXPECT_TRUE(outer.setSubchunkId("WAVE"));
        {
            FileChunk inner(outer, "data");
            EXPECT_TRUE(inner.add<bnb::Int8_tag>(1));
            EXPECT_TRUE(inner.append("ab"));
            EXPECT_TRUE(inner.commit());
        }
        EXPECT_TRUE(outer.commit());
    });
    EXPECT_EQ(bytes, "RIFF" + u32(4 + 8 + 4) + "WAVE" + "data" + u32(3) + "\1ab" + '\0');
}

TEST(Chunk, IdsAreFourCharacters) {
    EXPECT_EQ(written([](file::String& sink) { FileChunk(sink, "abcdef"); }), "abcd" + u32(0));
    EXPECT_EQ(written([](file::String& sink) { FileChunk(sink, "ab"); }),
              std::string("ab\0\0", 4) + u32(0));
}

TEST(Chunk, TheFormTypeStandsRightBehindTheHeader) {
    const auto bytes = written([](file::String& sink) {
        FileChunk chunk(sink, "RIFF");
        EXPECT_TRUE(chunk.setSubchunkId("ab"));
        EXPECT_FALSE(chunk.setSubchunkId("WAVE"));
        chunk.commit();
        FileChunk closed(sink, "LIST");
        closed.commit();
        EXPECT_FALSE(closed.setSubchunkId("INFO"));
    });
    EXPECT_EQ(bytes, "RIFF" + u32(4) + std::string("ab\0\0", 4) + "LIST" + u32(0));
}

TEST(Chunk, OnceClosedItStaysAsItIs) {
    const auto bytes = written([](file::String& sink) {
        FileChunk chunk(sink, "data");
        EXPECT_TRUE(chunk.add<bnb::Int8_tag>(-1));
        EXPECT_TRUE(chunk.commit());
        EXPECT_FALSE(chunk.is_open());
        EXPECT_FALSE(chunk.add<bnb::Int8_tag>(2));
        EXPECT_FALSE(chunk.append("x"));
        EXPECT_FALSE(chunk.commit());
    });
    EXPECT_EQ(bytes, "data" + u32(1) + std::string("\xFF\0", 2));
}

TEST(Chunk, TheDestructorCloses) {
    const auto bytes = written([](file::String& sink) { FileChunk(sink, "data").append("abc"); });
    EXPECT_EQ(bytes, chunk("data", "abc"));
}

/// Counts what nobody wants to wait for on a disk.
struct CountingSink {
    std::uint64_t written = 0;
    std::string patch;
    [[nodiscard]] std::uint64_t size() const { return written; }
    void append(std::string_view bytes) { written += bytes.size(); }
    bool overwrite(std::uint64_t offset, std::string_view bytes) {
        patch = std::to_string(offset) + ":" + std::string(bytes);
        return true;
    }
};

TEST(Chunk, FromFourGibibytesOnTheLengthLosesItsHighBits) {
    CountingSink sink{100, ""};
    Chunk<CountingSink> chunk(sink, "data");
    sink.written += (std::uint64_t{1} << 32) + 6;
    EXPECT_TRUE(chunk.commit());
    EXPECT_EQ(sink.patch, "104:" + u32(6));
    EXPECT_EQ(sink.size(), 100 + 8 + (std::uint64_t{1} << 32) + 6);
}

}  // namespace
}  // namespace vela::riff
