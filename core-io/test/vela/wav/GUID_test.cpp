#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <vela/wav/GUID.hpp>

namespace vela::wav {
namespace {

using testing_support::bytes_of;
using testing_support::TempFile;

const std::string pcm_bytes =
    bytes_of(1, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71);

TEST(GUID, PcmHasItsStandardBytes) {
    std::string bytes;
    KSDATAFORMAT_SUBTYPE_PCM().serialize(bytes);
    EXPECT_EQ(bytes, pcm_bytes);

    const TempFile file(pcm_bytes);
    file::Range range(file.name());
    GUID guid;
    ASSERT_TRUE(guid.parse(range));
    EXPECT_EQ(guid, KSDATAFORMAT_SUBTYPE_PCM());
}

TEST(GUID, EveryByteCounts) {
    for (std::size_t i = 0; i < pcm_bytes.size(); ++i) {
        SCOPED_TRACE(i);
        std::string other = pcm_bytes;
        other[i] ^= 1;
        const TempFile file(other), cut(pcm_bytes.substr(0, i));
        file::Range range(file.name()), short_range(cut.name());
        GUID guid;
        EXPECT_TRUE(guid.parse(range));
        EXPECT_NE(guid, KSDATAFORMAT_SUBTYPE_PCM());
        EXPECT_FALSE(guid.parse(short_range));
    }
}

}  // namespace
}  // namespace vela::wav
