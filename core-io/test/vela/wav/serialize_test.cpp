#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/wav/serialize.hpp>

namespace vela::wav {
namespace {

using namespace testing_support;

std::string written(const Format& format) {
    const TempFile on_disk;
    {
        file::String sink(on_disk.name());
        riff::Chunk<file::String> riff(sink, "RIFF");
        serialize(riff, format);
    }
    return on_disk.bytes().substr(8);
}

TEST(SerializeFormat, PlainPcmIsSixteenBytesWithoutAMask) {
    Format format = pcm_format(6, 24);
    format.channel_mask = 0x3F;
    EXPECT_EQ(written(format), "fmt " + u32(16) + u16(1) + u16(6) + u32(48000) + u32(48000 * 18) +
                                   u16(18) + u16(24));
}

TEST(SerializeFormat, ExtensibleGoesOnBehindTheWidth) {
    const Format format = extensible_format(2, 24);
    EXPECT_EQ(written(format), chunk("fmt ", fmt_content(format)));
    EXPECT_EQ(fmt_content(format).size(), 40u);

    Format bare = format;
    bare.extension_size = 0;
    EXPECT_EQ(written(bare), chunk("fmt ", fmt_content(bare).substr(0, 18)));
}

}  // namespace
}  // namespace vela::wav
