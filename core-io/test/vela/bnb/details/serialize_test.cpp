#include <gtest/gtest.h>

#include <random>
#include <support/TempFile.hpp>
#include <vela/bnb/details/serialize.hpp>
#include <vela/file/String.hpp>

namespace vela::bnb::details {
namespace {

using testing_support::bytes_of;
using testing_support::TempFile;

template <typename Tag, typename T>
std::string written(const T& value) {
    std::string bytes;
    serialize(bytes, value, Tag(), LittleEndian_tag());
    return bytes;
}

TEST(Serialize, LowBytesFirst) {
    EXPECT_EQ(written<UInt16_tag>(std::uint16_t{0x1234}), bytes_of(0x34, 0x12));
    EXPECT_EQ(written<UInt16_tag>(-2), bytes_of(0xFE, 0xFF));
    EXPECT_EQ(written<UInt24_tag>(-8388608), bytes_of(0, 0, 0x80));
    EXPECT_EQ(written<UInt32_tag>(-1), bytes_of(0xFF, 0xFF, 0xFF, 0xFF));
    EXPECT_EQ(written<UInt32_tag>(std::uint32_t{0x01020304}), bytes_of(4, 3, 2, 1));
    // Lengths of 4 GiB and more lose what does not fit.
    EXPECT_EQ(written<UInt32_tag>(std::uint64_t{0x901020304}), bytes_of(4, 3, 2, 1));
}

TEST(Serialize, FilesCountTheBytes) {
    const TempFile on_disk;
    {
        file::String out(on_disk.name());
        serialize(out, 0x030201, UInt24_tag(), LittleEndian_tag());
        EXPECT_EQ(out.size(), 3u);
        serialize(out, 0x0504, UInt16_tag(), LittleEndian_tag());
        EXPECT_EQ(out.size(), 5u);
    }
    EXPECT_EQ(on_disk.bytes(), bytes_of(1, 2, 3, 4, 5));
}

TEST(Serialize, WhatIsWrittenReadsBack) {
    std::mt19937 random(24);
    for (int round = 0; round < 1000; ++round) {
        const auto value = static_cast<std::int32_t>(random());
        const auto narrow = value >> 8;
        EXPECT_EQ(get_bytes(written<UInt32_tag>(value).data(), Int32_tag(), LittleEndian_tag()),
                  value);
        EXPECT_EQ(get_bytes(written<UInt24_tag>(narrow).data(), Int24_tag(), LittleEndian_tag()),
                  narrow);
    }
}

}  // namespace
}  // namespace vela::bnb::details
