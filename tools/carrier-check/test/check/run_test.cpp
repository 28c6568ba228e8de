#include <gtest/gtest.h>

#include <algorithm>
#include <check/run.hpp>
#include <sstream>

#include "support/Folder.hpp"
#include "support/answers.hpp"

namespace check {
namespace {

class KnownAnswers : public testing::TestWithParam<std::string> {};

TEST_P(KnownAnswers, AreSoundAndGiveTheFiguresOfTheirEncoder) {
    const std::string name = GetParam();
    auto call = support::call_for(name);
    const auto report = support::quality_lines(
        support::read_bytes(vela::file::Name((support::answer(name) / "stdout.txt").string())));
    std::ostringstream out, complaints;
    const bool well = run(call.options, out, complaints);
    EXPECT_EQ(complaints.str(), "");

    // A run with -n stops before its originals end, which must be told.
    const bool stopped = !call.frame_count.empty();
    EXPECT_EQ(well, !stopped) << out.str();
    EXPECT_EQ(out.str().find("PROBLEM: ") != std::string::npos, stopped);
    EXPECT_EQ(out.str().find(" blocks, but the originals make ") != std::string::npos, stopped);

    // With -L the encoder measures against what its lowpass left, which is in no file.
    if (!call.lowpass.empty()) return;
    EXPECT_EQ(support::quality_lines(out.str()), report);
}

INSTANTIATE_TEST_SUITE_P(All, KnownAnswers, testing::ValuesIn(support::all_answers()),
                         [](const auto& param) {
                             std::string name = param.param;
                             std::ranges::replace_if(
                                 name, [](char c) { return c == '-' || c == '.'; }, '_');
                             return name;
                         });

TEST(Run, SaysWhyItCannotBegin) {
    Options options = support::call_for("scene-9.1").options;
    options.originals[vela::api::channel::id::Left] = vela::file::Name("none.wav");
    std::ostringstream out, complaints;
    EXPECT_FALSE(run(options, out, complaints));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(complaints.str(), "carrier-check: none.wav: cannot be opened\n");
}

TEST(Run, JsonIsOneObjectOnOneLine) {
    Options options = support::call_for("metadata-5.1").options;
    options.json = options.verbose = true;
    std::ostringstream out, complaints;
    EXPECT_TRUE(run(options, out, complaints));
    const std::string text = out.str();
    EXPECT_TRUE(text.starts_with("{\"ok\":true,\"layout\":\"surround5.1\",\"frame_size\":1000,"))
        << text.substr(0, 80);
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_EQ(std::ranges::count(text, '{'), std::ranges::count(text, '}'));
}

TEST(Run, TellsAFileThatIsNoneAndChecksTheOthers) {
    Options options = support::call_for("plots-lcr").options;
    options.files[0] = vela::file::Name("none.wav");
    std::ostringstream out, complaints;
    EXPECT_FALSE(run(options, out, complaints));
    EXPECT_NE(out.str().find("enc_R.wav (Right): 3 of 3 blocks sound"), std::string::npos);
    EXPECT_NE(out.str().find("PROBLEM: none.wav: cannot be opened\n"), std::string::npos);
}

}  // namespace
}  // namespace check
