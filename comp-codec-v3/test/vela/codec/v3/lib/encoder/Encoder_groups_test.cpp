// The search over counts of bit-lines, as it shows in the winners and in the log of candidates.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vela/codec/v3/lib/encoder/encoders.hpp>

namespace vela::codec::v3::encoder {
namespace {

using api::ChannelVariant;
using encode::Frames;

/// All samples are multiples of `step`, which survive any shift up to it.
Frames mono_in_steps_of(int step) {
    auto samples = encode::noise(256, 1, 1 << 10);
    for (int& x : samples)
        x *= step;
    Frames frames;
    frames.set(encode::frame_of(api::channel::Center, samples));
    return frames;
}

TEST(EncoderSearch, OfEqualScoresTheOneTriedFirstWins) {
    for (const auto& [min, max, winner] :
         {std::tuple(3, 12, 10u), std::tuple(3, 7, 7u), std::tuple(11, 12, 11u)}) {
        const auto encoder = make(mono, mono, min, max);
        Frames out;
        for (int frame = 0; frame < 2; ++frame) {
            ASSERT_TRUE(encoder->encode_one(out, mono_in_steps_of(1 << 12)));
            EXPECT_EQ(record_of(out, api::channel::Center).nr_bitlines, winner)
                << "nearest to 10 at first, then to itself";
        }
    }
}

TEST(EncoderSearch, TheLowestErrorWins) {
    const auto encoder = make(mono, mono, 3, 12);
    Frames out;
    ASSERT_TRUE(encoder->encode_one(out, mono_in_steps_of(1 << 5)));
    EXPECT_LE(record_of(out, api::channel::Center).nr_bitlines, 5u)
        << "more bit-lines would cut samples";
}

TEST(EncoderSearch, ASilentFrameTakesTheFewestBitlines) {
    for (const unsigned nr_threads : {0u, 4u})
        for (const int min : {3, 5}) {
            const auto encoder = make(lcr, stereo, min, 12, nr_threads);
            Frames silent;
            for (const auto& channel :
                 {api::channel::Left, api::channel::Right, api::channel::Center})
                silent.set(encode::frame_of(channel, std::vector<int>(256)));
            Frames out;
            ASSERT_TRUE(encoder->encode_one(out, silent));
            const auto record = record_of(out, api::channel::Right);
            EXPECT_EQ(record.nr_bitlines, static_cast<unsigned>(min));
            EXPECT_EQ(record.channels, (std::vector<unsigned>{1}));
        }
}

/// The last row of a plot file.
std::vector<double> last_row_of(const std::string& name) {
    std::ifstream in(name);
    std::string row;
    for (std::string line; std::getline(in, line) && line != "EOD";)
        row = line;
    std::istringstream cursor(row);
    std::vector<double> values;
    for (double value = 0; cursor >> value;)
        values.push_back(value);
    return values;
}

// The center is exact where it stands alone, and not where it is mixed.
TEST(EncoderSearch, AChannelThatStandsInTwoGroupsCountsInBoth) {
    const std::string plot = testing::TempDir() + "Encoder_groups_test.plot";
    double figure = 0;
    {
        const auto encoder = make(lcr, stereo, 8, 8);
        ASSERT_TRUE(encoder->set_option("output.dbrms", plot));
        auto in = frames_of(lcr);
        in.set(encode::frame_of(api::channel::Right, std::vector<int>(256)));
        Frames out;
        ASSERT_TRUE(encoder->encode_one(out, in));
        ASSERT_TRUE(encoder->get_quality_metric(figure, ChannelVariant(api::channel::Center),
                                                QualityMetric::db_rms));
    }
    const auto row = last_row_of(plot);
    ASSERT_EQ(row.size(), 5u) << "start; Left, Center; Right, Center";
    EXPECT_LT(row[4] + 3, row[2]);
    const auto power = [](double db) { return std::pow(10, db / 10); };
    EXPECT_NEAR(figure, 10 * std::log10((power(row[2]) + power(row[4])) / 2), 1e-3);
}

#ifdef VELA_TEST_SWITCHES

/// A line of the log of candidates.
class Line {
public:
    explicit Line(std::string text) : text_(std::move(text)) {}

    [[nodiscard]] bool is_winner() const { return text_.find("\"winner\"") != std::string::npos; }
    [[nodiscard]] int operator[](const std::string& key) const {
        return std::stoi(text_.substr(text_.find('"' + key + "\":") + key.size() + 3));
    }

private:
    std::string text_;
};

/// What was tried, frame by frame.
std::vector<Line> candidates_of(std::uint64_t input, int bitline_min, int bitline_max,
                                const std::vector<Frames>& frames, unsigned nr_threads = 0) {
    const std::string log = testing::TempDir() + "Encoder_groups_test.jsonl";
    setenv("VELA_CANDIDATES", log.c_str(), 1);
    const auto encoder = make(input, mono, bitline_min, bitline_max, nr_threads);
    unsetenv("VELA_CANDIDATES");
    Frames out;
    for (const auto& in : frames)
        EXPECT_TRUE(encoder->encode_one(out, in));
    std::vector<Line> lines;
    std::ifstream in(log);
    for (std::string text; std::getline(in, text);)
        if (const Line line(text); !line.is_winner()) lines.push_back(line);
    return lines;
}

TEST(EncoderSearch, EveryCountOfBitlinesStartsWhereItEndedInTheFrameBefore) {
    for (const std::uint64_t input : {testmix2, testmix3}) {
        const auto lines = candidates_of(input, 8, 9, {3, frames_of(input)});
        ASSERT_EQ(lines.size(), 6u);
        std::map<int, int> starts{{8, 100}, {9, 120}};
        for (const Line& line : lines) {
            EXPECT_EQ(line["start"], starts[line["b"]]);
            starts[line["b"]] = line["centers"] + 20;
        }
    }
}

TEST(EncoderSearch, MixesOfTwoAndOfThreeAreRememberedApart) {
    auto two = frames_of(testmix3);
    two.set(encode::frame_of(api::channel::Top, std::vector<int>(256)));
    const auto three = frames_of(testmix3);
    const auto lines = candidates_of(testmix3, 9, 9, {two, three, two, three});
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0]["start"], 120);
    EXPECT_EQ(lines[1]["start"], 120) << "there was no mix of three yet";
    EXPECT_EQ(lines[2]["start"], lines[0]["centers"] + 20);
    EXPECT_EQ(lines[3]["start"], lines[1]["centers"] + 20);
}

TEST(EncoderSearch, TheNearestToTheCountBeforeIsTriedFirst) {
    // Scores are equal, so that the first one tried wins: 10 is nearest to 7.
    const auto lines =
        candidates_of(mono, 3, 7, {mono_in_steps_of(1 << 12), mono_in_steps_of(1 << 12)});
    ASSERT_EQ(lines.size(), 10u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(lines[i]["b"], 7 - static_cast<int>(i));
        EXPECT_EQ(lines[i]["prev_b"], 10);
        EXPECT_EQ(lines[i + 5]["prev_b"], 7);
    }
    EXPECT_EQ(lines[5]["b"], 7);
}

// With more at once, candidates would be begun that the score of a finished one spares.
TEST(EncoderSearch, NoMoreCandidatesAreTriedAtOnceThanThereAreProcessors) {
    const char* const before = std::getenv("VELA_PROCESSORS");
    const std::string kept = before ? before : "";
    setenv("VELA_PROCESSORS", "1", 1);
    const auto lines = candidates_of(mono, 3, 12, {10, mono_in_steps_of(1 << 12)}, 16);
    if (before)
        setenv("VELA_PROCESSORS", kept.c_str(), 1);
    else
        unsetenv("VELA_PROCESSORS");

    const int in_order[] = {10, 9, 11, 8, 12, 7, 6, 5, 4, 3};
    ASSERT_FALSE(lines.empty());
    std::size_t nr_tried = 0;
    for (const Line& line : lines) {
        // Those that are dropped without a trial leave no line.
        const auto* const at = std::ranges::find(in_order, line["b"]);
        if (at == in_order) nr_tried = 0;
        ASSERT_GE(at, in_order + nr_tried);
        nr_tried = static_cast<std::size_t>(at - in_order) + 1;
    }
}

TEST(EncoderSearch, WithOneCountThereIsOneCandidateAndNothingToFilter) {
    const auto lines = candidates_of(testmix2, 8, 8, {2, frames_of(testmix2)});
    ASSERT_EQ(lines.size(), 2u);
    for (const Line& line : lines)
        EXPECT_EQ(line["code"], 0);
}

#endif

}  // namespace
}  // namespace vela::codec::v3::encoder
