#include <gtest/gtest.h>

#include <filesystem>
#include <metadata_text.hpp>
#include <string>
#include <vector>
#include <vela/file/read.hpp>

namespace vela::downmix::tdl {

namespace {

std::vector<std::string> corpus() {
    const std::filesystem::path folder(VELA_TEST_DATA "/../fuzz/corpus/metadata_text");
    std::vector<std::string> texts;
    for (const auto& entry : std::filesystem::directory_iterator(folder.lexically_normal()))
        if (!file::read(texts.emplace_back(), file::Name(entry.path().string())))
            ADD_FAILURE() << "cannot read " << entry.path();
    return texts;
}

}  // namespace

// What fuzzing started from or has found, without the fuzzer.
TEST(ParserCorpus, EveryTextKeepsThePromises) {
    const auto texts = corpus();
    EXPECT_GE(texts.size(), 12u);
    for (const auto& text : texts)
        EXPECT_TRUE(fuzz::metadata_text(text)) << text;
}

// A file that is cut short ends in a plain false, or in what it says up to there.
TEST(ParserCorpus, EveryTextMayBeCutAnywhere) {
    for (const auto& text : corpus())
        for (std::size_t size = 0; size < text.size(); ++size)
            ASSERT_TRUE(fuzz::metadata_text(text.substr(0, size))) << text.substr(0, size);
}

}  // namespace vela::downmix::tdl
