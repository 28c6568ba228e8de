#include <gtest/gtest.h>

#include <check/find_carriers.hpp>
#include <filesystem>

#include "support/Folder.hpp"
#include "support/answers.hpp"

namespace check {
namespace {

using namespace vela::api::channel::id;
using support::Folder;
using vela::carrier::ChannelId;

class FindCarriers : public testing::Test {
protected:
    Carriers find(std::vector<vela::file::Name> files, const std::string& layout = "",
                  std::size_t frame_size = 512) {
        Options options;
        options.files = std::move(files);
        options.layout = layout;
        options.frame_size = frame_size;
        findings_ = {};
        return find_carriers(findings_, options);
    }

    /// A known carrier under another name.
    vela::file::Name copy(const std::string& answer, const std::string& from,
                          const std::string& to) const {
        return folder_.write(
            to, support::read_bytes(vela::file::Name((support::answer(answer) / from).string())));
    }

    const Folder folder_;
    Findings findings_;
};

std::vector<ChannelId> ids_of(const Carriers& carriers) {
    std::vector<ChannelId> out;
    for (const Lane& lane : carriers.lanes)
        out.push_back(lane.report.carrier);
    return out;
}

using Ids = std::vector<ChannelId>;

TEST_F(FindCarriers, KnowsThemByWhatTheyHoldWhateverTheirNames) {
    const auto carriers = find(
        {copy("mixed-13.1", "enc_Rs.wav", "a_L.wav"), copy("mixed-13.1", "enc_L.wav", "b_R.wav")});
    ASSERT_NE(carriers.recipe, nullptr);
    EXPECT_EQ(ids_of(carriers), (Ids{Left, RightSurround})) << "by channel, not as given";
    EXPECT_EQ(carriers.lanes[0].report.file, folder_.name("b_R.wav"));
    EXPECT_TRUE(findings_.problems.empty());
}

TEST_F(FindCarriers, KnowsRunsInTheOtherSchema) {
    const auto folder = support::answer("schema-8.0");
    const auto file = [&](const char* name) { return vela::file::Name((folder / name).string()); };
    const auto carriers =
        find({file("enc_FLc.wav"), file("enc_FRc.wav"), file("enc_Ls.wav"), file("enc_Rs.wav")});
    EXPECT_EQ(ids_of(carriers), (Ids{Left, Right, LeftSurround, RightSurround}));
}

TEST_F(FindCarriers, GoesByTheNameWhereNoBlockIsLeft) {
    const std::vector<int> damaged(2048, 1);
    for (const auto& [name, id] : std::map<std::string, ChannelId>{{"x_L.wav", Left},
                                                                   {"x_FLc.wav", Left},
                                                                   {"x_Ls.wav", LeftSurround},
                                                                   {"Lb.wav", LeftBack},
                                                                   {"x_LFE.wav", LFE}}) {
        const auto carriers = find({folder_.write_wav(name, {damaged})}, "13.1");
        EXPECT_EQ(ids_of(carriers), Ids{id}) << name;
        EXPECT_TRUE(carriers.lanes[0].report.problems.empty());
    }
}

TEST_F(FindCarriers, NameIsNotLookedAtBeforeSomeDamagedBlocks) {
    auto samples = support::carrier_of("mixed-13.1", "enc_Rs.wav");
    samples[0] ^= 1;
    EXPECT_EQ(ids_of(find({folder_.write_wav("a_L.wav", {samples})})), Ids{RightSurround});
}

TEST_F(FindCarriers, ToldThatANameIsNeeded) {
    const auto file = folder_.write_wav("what.wav", {std::vector<int>(2048, 1)});
    const auto carriers = find({file}, "13.1");
    EXPECT_EQ(carriers.lanes.at(0).group, nullptr);
    EXPECT_EQ(carriers.lanes[0].report.problems,
              std::vector{file.str() + ": cannot tell which carrier channel this is; let its name "
                                       "end in the channel's short name"});
}

TEST_F(FindCarriers, ToldThatAFileIsOfAnotherLayout) {
    const auto file = copy("mixed-13.1", "enc_Lb.wav", "x_L.wav");
    EXPECT_EQ(find({file}, "lcr").lanes.at(0).report.problems,
              std::vector{file.str() + ": holds channels that no carrier of lcr holds together"});
}

TEST_F(FindCarriers, InterleavedFileFollowsTheChannelMask) {
    const vela::file::Name file((support::answer("interleaved-7.1") / "enc_.wav").string());
    const auto carriers = find({file}, "7.1");
    EXPECT_EQ(ids_of(carriers), (Ids{Left, Right, Center, LFE, LeftSurround, RightSurround}));
    for (std::size_t i = 0; i < carriers.lanes.size(); ++i) {
        EXPECT_EQ(carriers.lanes[i].channel, i);
        EXPECT_EQ(carriers.lanes[i].track, carriers.lanes[0].track) << "read once";
    }
    EXPECT_TRUE(find({file}).lanes.empty());
    EXPECT_EQ(findings_.problems, std::vector{file.str() + ": an interleaved file needs --layout"});
    EXPECT_TRUE(find({file}, "lcr").lanes.empty());
    EXPECT_EQ(findings_.problems,
              std::vector{file.str() + ": holds 6 channels, the carrier has 2"});
}

TEST_F(FindCarriers, OfSeveralFilesEachIsMono) {
    const auto mono = copy("mixed-13.1", "enc_L.wav", "x_L.wav");
    const auto stereo =
        folder_.write_wav("x_R.wav", {std::vector<int>(512), std::vector<int>(512)});
    const auto carriers = find({mono, stereo});
    EXPECT_EQ(carriers.lanes.back().report.problems,
              std::vector{stereo.str() + ": holds 2 channels; of several files each must be mono"});
}

TEST_F(FindCarriers, TwinsAreOneTooMany) {
    const auto a = copy("mixed-13.1", "enc_L.wav", "a_L.wav");
    const auto b = copy("mixed-13.1", "enc_L.wav", "b_R.wav");
    (void)find({a, b});
    EXPECT_EQ(findings_.problems,
              std::vector{b.str() + " and " + a.str() + " are one and the same carrier channel"});
}

TEST_F(FindCarriers, RefusesLayoutsThatAreNone) {
    const auto file = copy("mixed-13.1", "enc_L.wav", "a_L.wav");
    EXPECT_TRUE(find({file}, "12.9").lanes.empty());
    EXPECT_EQ(findings_.problems, std::vector<std::string>{"12.9 is no layout"});
    EXPECT_TRUE(find({file}, "22.2").lanes.empty());
    EXPECT_EQ(findings_.problems, std::vector<std::string>{"22.2 has no carrier"});
}

TEST_F(FindCarriers, GoesOnWithoutAFileThatCannotBeRead) {
    const auto carriers =
        find({folder_.name("none.wav"), copy("mixed-13.1", "enc_L.wav", "a_L.wav")});
    EXPECT_EQ(findings_.problems,
              std::vector{folder_.name("none.wav").str() + ": cannot be opened"});
    EXPECT_EQ(ids_of(carriers), Ids{Left});
}

}  // namespace
}  // namespace check
