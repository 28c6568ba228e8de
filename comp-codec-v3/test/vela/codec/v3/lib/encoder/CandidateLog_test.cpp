#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encoder/CandidateLog.hpp>
#include <vela/file/read.hpp>

namespace vela::codec::v3::encoder {
namespace {

/// What a log of two frames says, while the environment names a file for it or does not.
std::string text_of_log(bool named) {
    const std::string name = testing::TempDir() + "CandidateLog_test.jsonl";
    std::filesystem::remove(name);
    if (named) setenv("VELA_CANDIDATES", name.c_str(), 1);
    {
        CandidateLog log;
        unsetenv("VELA_CANDIDATES");
        encode::Group group = encode::group_of(5, {{1, 2}});
        group.mixed = {1, -1};
        log.add(group, encode::Chain::Code::filtered);
        group.span = {2, 4};  // the next frame
        group.has_score = true;
        group.score = -0.5;
        group.preset = 7;
        log.add_winner(group);
    }
    std::string text;
    if (std::filesystem::exists(name)) {
        EXPECT_TRUE(file::read(text, file::Name(name)));
    }
    return text;
}

#ifdef VELA_TEST_SWITCHES
constexpr bool test_switches = true;
#else
constexpr bool test_switches = false;
#endif

TEST(CandidateLog, OnlyTestBuildsListenToTheEnvironment) {
    EXPECT_EQ(text_of_log(true).empty(), !test_switches);
    EXPECT_EQ(text_of_log(false), "");
}

TEST(CandidateLog, ALinePerCandidateAndPerWinner) {
    if (!test_switches) GTEST_SKIP() << "there is no log in this build";
    // Hashes are FNV-1a over 32-bit words; that of nothing is its offset, 2166136261.
    EXPECT_EQ(text_of_log(true),
              "{\"frame\":0,\"carrier\":\"L\",\"b\":5,\"prev_b\":10,\"active\":0,\"start\":0,"
              "\"centers\":0,\"fits\":false,\"score\":null,\"scaler_ix\":0,\"rice_k\":0,"
              "\"center_bits\":0,\"instruction_bits\":0,\"h_deltas\":2166136261,"
              "\"h_centers\":2166136261,\"h_ixs\":2166136261,\"h_mixed\":3969839840,\"learns\":0,"
              "\"fit\":0,\"need\":0,\"capacity\":0,\"retries\":0,\"code\":2,\"filtered\":true,"
              "\"overflow\":false,\"silent\":false}\n"
              "{\"frame\":1,\"carrier\":\"L\",\"b\":5,\"prev_b\":10,\"active\":0,\"winner\":true,"
              "\"centers\":0,\"fits\":false,\"score\":-0.5,\"scaler_ix\":0,\"rice_k\":0,"
              "\"center_bits\":0,\"instruction_bits\":0,\"h_deltas\":2166136261,"
              "\"h_centers\":2166136261,\"h_ixs\":2166136261,\"h_mixed\":3969839840,"
              "\"h_frame\":2166136261,\"meta\":-1,\"preset\":7,\"dbrms\":[],\"dbpeak\":[]}\n");
}

}  // namespace
}  // namespace vela::codec::v3::encoder
