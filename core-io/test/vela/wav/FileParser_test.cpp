#include <gtest/gtest.h>

#include <support/TempFile.hpp>
#include <support/wav_bytes.hpp>
#include <vela/wav/FileParser.hpp>

namespace vela::wav {
namespace {

using namespace testing_support;

TEST(FileParser, ReadsTheFileThatItNames) {
    const TempFile file(wav_file(pcm_format(1, 24), u24(5)));
    FileParser<int> parser(file.name());
    EXPECT_EQ(parser.name(), file.name());
    parser.block_size = 1;
    ASSERT_TRUE(parser.parse());
    EXPECT_EQ(parser.format->sample_rate, 48000u);
    EXPECT_EQ(parser.nr_frames, 1u);
}

}  // namespace
}  // namespace vela::wav
