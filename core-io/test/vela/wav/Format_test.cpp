#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/wav/Format.hpp>

namespace vela::wav {
namespace {

using namespace testing_support;

bool parse(Format& format, const std::string& content) {
    const TempFile file(content);
    file::Range range(file.name());
    return format.parse(range);
}

TEST(Format, ReadsEveryField) {
    Format plain, extensible;
    ASSERT_TRUE(parse(plain, fmt_content(pcm_format(2, 24))));
    EXPECT_EQ(plain, pcm_format(2, 24));
    ASSERT_TRUE(parse(extensible, fmt_content(extensible_format(6, 16))));
    EXPECT_EQ(extensible, extensible_format(6, 16));
}

TEST(Format, ForgetsTheFileBefore) {
    Format format = extensible_format(2, 24);
    ASSERT_TRUE(parse(format, fmt_content(pcm_format(1, 16))));
    EXPECT_EQ(format, pcm_format(1, 16));
    EXPECT_FALSE(parse(format, ""));
    EXPECT_EQ(format, Format());
}

TEST(Format, PlainPcmMayCarryMoreThanIsLookedAt) {
    Format format;
    EXPECT_TRUE(parse(format, fmt_content(pcm_format(1, 24)) + "\x05\x01 and more"));
    EXPECT_EQ(format, pcm_format(1, 24));
}

TEST(Format, TheExtensionIsAsLongAsItSays) {
    Format format;
    const std::string content = fmt_content(extensible_format(1, 24));
    EXPECT_TRUE(parse(format, content));
    EXPECT_FALSE(parse(format, content + "xx"));

    Format longer = extensible_format(1, 24);
    longer.extension_size = 24;
    EXPECT_FALSE(parse(format, fmt_content(longer)));
    EXPECT_TRUE(parse(format, fmt_content(longer) + "xx"));
}

TEST(Format, CutShortAnywhereItIsRefused) {
    for (const auto& whole : {pcm_format(1, 24), extensible_format(1, 24)}) {
        const std::string content = fmt_content(whole);
        for (std::size_t size = 0; size < content.size(); ++size) {
            SCOPED_TRACE(size);
            Format format;
            EXPECT_FALSE(parse(format, content.substr(0, size)));
        }
    }
    // Even when the size agrees, the extension must hold its three fields.
    Format format, tiny = extensible_format(1, 24);
    tiny.extension_size = 6;
    EXPECT_FALSE(parse(format, fmt_content(tiny).substr(0, 16 + 2 + 6)));
}

TEST(Format, AnotherSubformatIsRefused) {
    Format format, floating = extensible_format(1, 32);
    floating.subformat.data1 = 3;
    EXPECT_FALSE(parse(format, fmt_content(floating)));
}

TEST(Format, OnlyIntegersThatFillTheirWidthArePcm) {
    EXPECT_TRUE(pcm_format(1, 8).is_pcm());
    EXPECT_TRUE(extensible_format(1, 24).is_pcm());
    Format format = extensible_format(1, 24);
    format.valid_bits_per_sample = 20;
    EXPECT_FALSE(format.is_pcm());
    format = pcm_format(1, 32);
    format.format_tag = 3;
    EXPECT_FALSE(format.is_pcm());
    EXPECT_FALSE(Format().is_pcm());
}

}  // namespace
}  // namespace vela::wav
