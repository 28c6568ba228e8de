#include <gtest/gtest.h>

#include <arguments.hpp>
#include <encode_decode.hpp>
#include <filesystem>
#include <metadata_text.hpp>
#include <record_reader.hpp>
#include <strange.hpp>
#include <string>
#include <vector>
#include <vela/file/read.hpp>
#include <wav_reader.hpp>

namespace vela::fuzz {

namespace {

struct Target {
    const char* name;
    bool (*run)(std::string_view);
    std::size_t nr_cuts;  ///< lengths to which one input is cut; encoding takes its time
};

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

std::vector<std::string> corpus_of(const Target& target) {
    std::vector<std::string> inputs;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(VELA_CORPUS) / target.name))
        if (!file::read(inputs.emplace_back(), file::Name(entry.path().string())))
            ADD_FAILURE() << "cannot read " << entry.path();
    return inputs;
}

class Corpus : public testing::TestWithParam<Target> {};

}  // namespace

// What fuzzing started from or has found, without the fuzzer.
TEST_P(Corpus, KeepsThePromises) {
    const auto inputs = corpus_of(GetParam());
    EXPECT_GE(inputs.size(), 10u);
    for (const auto& input : inputs)
        EXPECT_TRUE(GetParam().run(input)) << testing::PrintToString(input);
}

TEST_P(Corpus, MayBeCutAnywhere) {
    for (const auto& input : corpus_of(GetParam())) {
        const std::size_t step = 1 + input.size() / GetParam().nr_cuts;
        for (std::size_t size = 0; size < input.size(); size += step)
            ASSERT_TRUE(GetParam().run(input.substr(0, size)))
                << testing::PrintToString(input.substr(0, size));
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, Corpus,
                         testing::Values(Target{"arguments", arguments, 4096},
                                         Target{"encode_decode", encode_decode, 4},
                                         Target{"metadata_text", metadata_text, 4096},
                                         Target{"record_reader", record_reader, 4096},
                                         Target{"strange", strange, 4096},
                                         Target{"wav_reader", wav_reader, 4096}),
                         [](const auto& target) { return std::string(target.param.name); });

// A target that refuses every frame would find nothing.
TEST(CorpusOfEncodeDecode, MostFramesAreEncodedAndDecoded) {
    const std::uint64_t before = decoded_frames.count;
    const auto inputs = corpus_of({"encode_decode", encode_decode, 0});
    for (const auto& input : inputs)
        EXPECT_TRUE(encode_decode(input));
    EXPECT_GE(decoded_frames.count - before, inputs.size() / 2);
}

}  // namespace vela::fuzz
