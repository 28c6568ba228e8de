#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <vela/file/Range.hpp>

namespace vela::file {
namespace {

using bnb::LittleEndian_tag;
using testing_support::bytes_of;
using testing_support::TempFile;

TEST(Range, SlicesUpToTheLastByteAndNoFurther) {
    const TempFile file("abcdef");
    Range range(file.name());
    std::string out;
    EXPECT_FALSE(range.pop_slice(out, 7));
    EXPECT_EQ(range.size(), 6u);
    ASSERT_TRUE(range.pop_slice(out, 2));
    EXPECT_EQ(out, "ab");
    EXPECT_FALSE(range.pop_slice(out, 5));
    ASSERT_TRUE(range.pop_slice(out, 4));
    EXPECT_EQ(out, "cdef");
    EXPECT_TRUE(range.empty());
    EXPECT_FALSE(range.pop_slice(out, 1));
    EXPECT_FALSE(range.pop_slice(out, UINT64_MAX));
}

TEST(Range, ASubRangeEndsEvenIfTheFileGoesOn) {
    const TempFile file("abcdef");
    Range range(file.name()), part;
    ASSERT_TRUE(range.pop_slice(part, 3));
    std::string out;
    EXPECT_FALSE(part.pop_slice(out, 4));
    EXPECT_FALSE(part.pop_slice(part, 4));
    EXPECT_FALSE(part.pop_if("abcd"));
    ASSERT_TRUE(part.pop_slice(out, 3));
    EXPECT_EQ(out, "abc");
    EXPECT_FALSE(part.pop_slice(out, 1));
    // The slice before it was taken whether or not anybody read it.
    EXPECT_TRUE(range.pop_if("def"));
    EXPECT_FALSE(range.pop_slice(part, 1));
}

TEST(Range, SkipsUpToTheLastByteAndNoFurther) {
    const TempFile file("abcdef");
    Range range(file.name());
    EXPECT_FALSE(range.skip(7));
    ASSERT_TRUE(range.skip(4));
    EXPECT_FALSE(range.skip(UINT64_MAX));
    EXPECT_TRUE(range.pop_if("ef"));
    EXPECT_TRUE(range.skip(0));
    EXPECT_FALSE(range.skip(1));
}

TEST(Range, CopiesMoveOnTheirOwnAndKeepTheFileOpen) {
    const TempFile file("abcdef");
    Range copy;
    {
        Range range(file.name());
        EXPECT_TRUE(range.pop_if("ab"));
        copy = range;
        EXPECT_TRUE(range.pop_if("cdef"));
    }
    EXPECT_FALSE(copy.pop_if("x"));
    EXPECT_TRUE(copy.pop_if("cd"));
    EXPECT_EQ(copy.size(), 2u);
}

TEST(Range, WithoutAFileEverythingFails) {
    for (Range range : {Range(), Range(TempFile().name()), Range(Name())}) {
        EXPECT_FALSE(range.is_open());
        EXPECT_TRUE(range.empty());
        std::string out;
        Range part;
        int number = 0;
        EXPECT_FALSE(range.pop_slice(out, 0));
        EXPECT_FALSE(range.pop_slice(part, 0));
        EXPECT_FALSE(range.skip(0));
        EXPECT_FALSE(range.pop_if(""));
        EXPECT_FALSE((range.pop_raw<bnb::Int8_tag, LittleEndian_tag>(number)));
    }
}

template <typename Tag, typename T>
T raw(const std::string& bytes) {
    const TempFile file(bytes);
    Range range(file.name());
    T out{};
    EXPECT_TRUE((range.pop_raw<Tag, LittleEndian_tag>(out)));
    EXPECT_TRUE(range.empty());
    return out;
}

TEST(Range, NumbersAreLittleEndianAndSignExtended) {
    EXPECT_EQ((raw<bnb::UInt16_tag, std::uint16_t>(bytes_of(0x34, 0x92))), 0x9234);
    EXPECT_EQ((raw<bnb::UInt32_tag, std::uint32_t>(bytes_of(1, 2, 3, 0xF4))), 0xF4030201u);
    EXPECT_EQ((raw<bnb::Int16_tag, int>(bytes_of(0xFF, 0x7F))), 32767);
    EXPECT_EQ((raw<bnb::Int16_tag, int>(bytes_of(0x00, 0x80))), -32768);
    EXPECT_EQ((raw<bnb::Int24_tag, int>(bytes_of(0xFF, 0xFF, 0xFF))), -1);
    EXPECT_EQ((raw<bnb::Int24_tag, int>(bytes_of(0x00, 0x00, 0x80))), -8388608);
    EXPECT_EQ((raw<bnb::Int24_tag, int>(bytes_of(0xFF, 0xFF, 0x7F))), 8388607);
    EXPECT_EQ((raw<bnb::Int32_tag, int>(bytes_of(0x00, 0x00, 0x00, 0x80))), INT32_MIN);
    EXPECT_EQ((raw<bnb::Int32_tag, int>(bytes_of(0xFE, 0xFF, 0xFF, 0xFF))), -2);
}

TEST(Range, ANumberCutShortIsNotTaken) {
    const TempFile file("ab");
    Range range(file.name());
    int number = 7;
    EXPECT_FALSE((range.pop_raw<bnb::Int24_tag, LittleEndian_tag>(number)));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(range.size(), 2u);
}

}  // namespace
}  // namespace vela::file
