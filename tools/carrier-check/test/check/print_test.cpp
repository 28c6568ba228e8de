#include <gtest/gtest.h>

#include <check/print.hpp>
#include <sstream>

namespace check {
namespace {

using namespace vela::api::channel::id;

Findings small_case() {
    Findings findings;
    findings.layout = "lcr";
    findings.frame_size = 16;
    findings.sample_rate = 48000;
    CarrierReport& left = findings.carriers.emplace_back();
    left.file = vela::file::Name("a\"L\".wav");
    left.carrier = Left;
    left.nr_blocks = left.nr_sync = 4;
    left.nr_sound = left.nr_checksum = 3;
    left.bitlines = {5, 8, 6};
    left.centers = {0, 150, 20};
    left.spare_bits = {7, 7, 7};
    left.instructions = {{{30, {1}}, {0, 1, 3}}, {{64, {2, 60}}, {3}}};
    left.add_problem("a\"L\".wav: block 2: there is no sync word");
    findings.problems = {"back\\slash\tand tab"};
    return findings;
}

TEST(Print, TextForPeople) {
    std::ostringstream out;
    print_text(out, small_case());
    EXPECT_EQ(out.str(),
              "a\"L\".wav (Left): 3 of 4 blocks sound; sync 4, CRC 3; bit-lines 5/6/8; centers "
              "0/20/150; spare bits 7/7/7\n"
              "Instructions:\n"
              "  Left: InputLayout 1 in frames 0-1 3\n"
              "  Left: ChannelAttenuation 2 60 in frames 3\n"
              "PROBLEM: a\"L\".wav: block 2: there is no sync word\n"
              "PROBLEM: back\\slash\tand tab\n");
}

TEST(Print, JsonForMachines) {
    std::ostringstream out;
    print_json(out, small_case());
    EXPECT_EQ(
        out.str(),
        R"({"ok":false,"layout":"lcr","frame_size":16,"sample_rate":48000,"carriers":[)"
        R"({"file":"a\"L\".wav","carrier":"Left","blocks":4,"sound":3,"sync":4,"crc":3,)"
        R"("bitlines":{"from":5,"median":6,"to":8},"centers":{"from":0,"median":20,"to":150},)"
        R"("spare_bits":{"from":7,"median":7,"to":7},"instructions":[)"
        R"({"name":"InputLayout","opcode":30,"operands":[1],"frames":[0,1,3]},)"
        R"({"name":"ChannelAttenuation","opcode":64,"operands":[2,60],"frames":[3]}],)"
        R"("problems":["a\"L\".wav: block 2: there is no sync word"]}],)"
        R"("problems":["back\\slash\u0009and tab"]})"
        "\n");
}

TEST(Print, SoundCarriersEndInASentence) {
    Findings findings = small_case();
    findings.problems.clear();
    findings.carriers[0].problems.clear();
    std::ostringstream out;
    print_text(out, findings);
    EXPECT_TRUE(out.str().ends_with("\nAll blocks of all carriers are sound\n"));
    std::ostringstream json;
    print_json(json, findings);
    EXPECT_TRUE(json.str().starts_with("{\"ok\":true,"));
}

TEST(Print, FiguresStandInTheFormOfTheEncodersReport) {
    Findings findings;
    findings.comparison.emplace();
    vela::carrier::Block block;
    block.header.channels = {Left};
    block.mix.resize(16);
    block.channels[Left].assign(16, 0);
    std::string why;
    ASSERT_TRUE(findings.comparison->add(why, block, block.header.channels,
                                         {{Left, std::vector<int>(16, 0x400000)}}, 0));
    std::ostringstream out;
    print_text(out, findings);
    const std::string figures = "{dbrms: -6.0206}\t{dbpeak: -6.0206}\t{crest: 1}\n";
    EXPECT_EQ(out.str(),
              "Instructions:\n"
              "Quality metrics: {channel: Left}                " +
                  figures + "Quality metrics for all channels:               " + figures +
                  "All blocks of all carriers are sound\n");
    std::ostringstream json;
    print_json(json, findings);
    const std::string values = R"("dbrms":-6.020599913,"dbpeak":-6.020599913,"crest":1})";
    EXPECT_NE(json.str().find(R"("quality":[{"channel":"Left",)" + values + R"(],"quality_all":{)" +
                              values),
              std::string::npos)
        << json.str();
}

TEST(Print, NothingComparedGivesNoFigures) {
    Findings findings;
    findings.comparison.emplace();
    std::ostringstream out;
    print_text(out, findings);
    EXPECT_EQ(out.str().find("Quality"), std::string::npos);
}

TEST(Print, ACarrierThatCouldNotBeToldIsUnknown) {
    Findings findings;
    findings.carriers.emplace_back().file = vela::file::Name("x.wav");
    std::ostringstream out;
    print_text(out, findings);
    EXPECT_TRUE(out.str().starts_with("x.wav (unknown): 0 of 0 blocks sound;")) << out.str();
}

TEST(Print, OneLinePerBlock) {
    CarrierReport carrier;
    carrier.file = vela::file::Name("x_L.wav");
    vela::carrier::Block block;
    block.nr_bitlines = 5;
    block.header.channels = {Left, LeftSurround, Center};
    block.centers.resize(37);
    block.nr_spare_bits = 12;
    std::ostringstream out;
    print_block(out, carrier, 3, block);
    EXPECT_EQ(out.str(),
              "x_L.wav frame 3: bit-lines 5, channels L Ls C, centers 37, spare bits 12\n");
}

}  // namespace
}  // namespace check
