#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <check/Walk.hpp>
#include <sstream>

#include "support/Folder.hpp"
#include "support/answers.hpp"

namespace check {
namespace {

using namespace vela::api::channel::id;
using support::Folder;
using testing::ElementsAre;
using testing::StartsWith;
using Samples = std::vector<int>;

/// Carriers and originals of the 9.1 scene: 4 blocks of 1024 samples.
class WalkTest : public testing::Test {
protected:
    Options options_ = support::call_for("scene-9.1").options;
    const Folder folder_;
    std::ostringstream out_;

    /// The carrier of Left, changed.
    vela::file::Name replace_left(const Samples& samples, std::uint32_t rate = 48000) {
        auto& file = options_.files.at(1);
        EXPECT_TRUE(file.str().ends_with("_L.wav"));
        return file = folder_.write_wav("x_L.wav", {samples}, 24, rate);
    }

    Findings walk() {
        Findings findings;
        Walk walk(options_, findings, out_);
        std::string why;
        EXPECT_TRUE(walk.open(why)) << why;
        walk.run();
        return findings;
    }

    std::string why_not() {
        Findings findings;
        Walk walk(options_, findings, out_);
        std::string why;
        EXPECT_FALSE(walk.open(why));
        return why;
    }

    const Samples left_ = support::carrier_of("scene-9.1", "enc_L.wav");

    Samples left_times(std::size_t times) const {
        Samples out;
        for (; times > 0; --times)
            out.insert(out.end(), left_.begin(), left_.end());
        return out;
    }
};

std::vector<std::string> problems_of(const Findings& findings) {
    std::vector<std::string> out = findings.problems;
    for (const auto& carrier : findings.carriers)
        out.insert(out.end(), carrier.problems.begin(), carrier.problems.end());
    return out;
}

TEST_F(WalkTest, FindsNothingWrongWithSoundCarriers) {
    const Findings findings = walk();
    EXPECT_THAT(problems_of(findings), ElementsAre());
    EXPECT_EQ(findings.layout, "9.1");
    EXPECT_EQ(findings.sample_rate, 48000u);
    ASSERT_EQ(findings.carriers.size(), 6u);
    for (const auto& carrier : findings.carriers) {
        EXPECT_EQ(carrier.nr_blocks, 4u);
        EXPECT_EQ(carrier.nr_sound, 4u);
        EXPECT_EQ(carrier.nr_sync, 4u);
        EXPECT_EQ(carrier.nr_checksum, 4u);
    }
}

TEST_F(WalkTest, CountsTheMarksOfADamagedBlock) {
    auto samples = left_;
    samples[2048 + 5] ^= 1 << 12;
    replace_left(samples);
    const auto findings = walk();
    const auto& left = findings.carriers.at(0);
    EXPECT_EQ(left.nr_blocks, 4u);
    EXPECT_EQ(left.nr_sound, 3u);
    EXPECT_EQ(left.nr_sync, 4u);
    EXPECT_EQ(left.nr_checksum, 3u);
    EXPECT_THAT(left.problems, ElementsAre(StartsWith(folder_.name("x_L.wav").str() +
                                                      ": block 2: the checksum reads ")));
}

TEST_F(WalkTest, TellsWhatHappenedOnceAndCountsTheRest) {
    options_.originals.clear();
    auto samples = left_times(3);
    samples.erase(samples.begin() + 1000, samples.begin() + 1003);
    options_.files = {folder_.write_wav("x_L.wav", {samples})};
    const std::string file = folder_.name("x_L.wav").str();
    const auto none = "there is no sync word";
    EXPECT_THAT(
        problems_of(walk()),
        ElementsAre(StartsWith(file + ": block 0: the checksum reads "),
                    file + ": block 1: " + none, file + ": block 2: " + none,
                    file + ": block 3: " + none, file + ": block 4: " + none,
                    file + ": ends in the middle of block 11, after 1021 of its 1024 samples",
                    file + ": 6 more blocks are not as they should be"));
}

TEST_F(WalkTest, TellsTheLengthThatTheOriginalsMake) {
    const auto shorter = replace_left({left_.begin(), left_.begin() + 3072});
    EXPECT_THAT(problems_of(walk()),
                ElementsAre(shorter.str() + ": holds 3 blocks, but the originals make 4"));
    const auto longer = replace_left(left_times(2));
    EXPECT_THAT(problems_of(walk()),
                ElementsAre(longer.str() + ": holds 8 blocks, but the originals make 4"));
    const auto empty = replace_left({});
    EXPECT_THAT(problems_of(walk()),
                ElementsAre(empty.str() + ": holds 0 blocks, but the originals make 4"));
}

TEST_F(WalkTest, TellsCarriersOfDifferentLengths) {
    options_.originals.clear();
    const auto shorter = replace_left({left_.begin(), left_.begin() + 3072});
    EXPECT_THAT(problems_of(walk()),
                ElementsAre(shorter.str() + ": holds 3 blocks, but the longest carrier has 4"));
    const auto cut = replace_left({left_.begin(), left_.end() - 1});
    EXPECT_THAT(problems_of(walk()),
                ElementsAre(cut.str() + ": ends in the middle of block 3, after 1023 of its 1024 "
                                        "samples",
                            cut.str() + ": holds 3 blocks, but the longest carrier has 4"));
}

TEST_F(WalkTest, TellsAFileWithoutSamples) {
    options_.originals.clear();
    options_.files = {folder_.write_wav("x_L.wav", {{}})};
    EXPECT_THAT(problems_of(walk()), ElementsAre(options_.files[0].str() + ": holds no samples"));
}

TEST_F(WalkTest, TellsBlocksExchangedBetweenCarriers) {
    auto samples = left_;
    const auto right = support::carrier_of("scene-9.1", "enc_R.wav");
    std::copy_n(right.begin() + 1024, 1024, samples.begin() + 1024);
    const auto file = replace_left(samples);
    EXPECT_THAT(problems_of(walk()),
                ElementsAre(file.str() + ": block 1: channel Right does not belong there in this "
                                         "carrier"));
}

TEST_F(WalkTest, TellsABlockOfAnotherLayout) {
    options_ = support::call_for("carrier-5.0-9.0").options;
    options_.layout = "5.0";
    EXPECT_FALSE(walk().all_well());
}

TEST_F(WalkTest, TellsAnotherSampleRate) {
    const auto file = replace_left(left_, 44100);
    EXPECT_THAT(problems_of(walk()), ElementsAre(file.str() + ": has 44100 Hz, but the originals "
                                                              "have 48000 Hz: it was resampled"));
    options_.originals.clear();
    EXPECT_THAT(problems_of(walk()).front(),
                testing::HasSubstr("but the first carrier has 44100 Hz"));
}

TEST_F(WalkTest, ComparesOnlyCarriersWithAllTheirOriginals) {
    options_.originals.erase(HeightLeft);
    const Findings findings = walk();
    EXPECT_THAT(problems_of(findings),
                ElementsAre(options_.files[1].str() +
                            ": cannot be compared: channel HeightLeft has no --original"));
    const auto figures = findings.comparison->figures();
    EXPECT_FALSE(figures.contains(Left));
    EXPECT_TRUE(figures.contains(Right));
}

TEST_F(WalkTest, DoesNotBeginWithoutItsOriginalsOrItsOutputs) {
    auto bad = options_;
    std::swap(options_.originals[Left], bad.originals[Left]);
    options_.originals[Left] = folder_.name("none.wav");
    EXPECT_EQ(why_not(), folder_.name("none.wav").str() + ": cannot be opened");
    options_.originals[Left] = bad.originals[Left];

    options_.rebuild_prefix = folder_.name("no/such/").str();
    EXPECT_EQ(why_not(), folder_.name("no/such/L.wav").str() + ": cannot be made");
}

TEST_F(WalkTest, RebuildsEveryChannelOfEveryCarrier) {
    options_.rebuild_prefix = folder_.name("r_").str();
    EXPECT_THAT(problems_of(walk()), ElementsAre());
    for (const auto& [id, original] : options_.originals) {
        const std::string name = vela::api::Channel::create(id).short_name();
        const auto rebuilt = support::read_samples(folder_.name("r_" + name + ".wav"));
        EXPECT_EQ(rebuilt.size(), 4096u);
        const auto expected = support::read_samples(original);
        for (std::size_t t = 0; t < expected.size(); ++t)
            ASSERT_NEAR(rebuilt[t], expected[t], 4000) << name << ' ' << t;  // -66 dB
    }
}

TEST_F(WalkTest, PrintsALinePerBlockIfAsked) {
    options_.verbose = true;
    (void)walk();
    EXPECT_EQ(std::ranges::count(out_.str(), '\n'), 24);
}

}  // namespace
}  // namespace check
