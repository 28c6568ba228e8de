#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encoder/Factory.hpp>

namespace vela::codec::v3::encoder {
namespace {

using api::ChannelVariant;
using encode::Frames;
using encode::music;

constexpr std::uint64_t testmix2 = 0x804;
constexpr std::uint64_t mono = 0x4;
constexpr std::uint64_t lcr = 0x7;
constexpr std::uint64_t stereo = 0x3;

std::shared_ptr<IEncoder> make(std::uint64_t input, std::uint64_t carrier, int bitline_min = 8,
                               int bitline_max = 9, unsigned nr_threads = 0) {
    std::shared_ptr<IEncoder> encoder;
    EXPECT_TRUE(
        create(encoder, api::SpeakerLayout(input), api::SpeakerLayout(carrier), nr_threads));
    EXPECT_TRUE(encoder->set_option("bitline.min", bitline_min));
    EXPECT_TRUE(encoder->set_option("bitline.max", bitline_max));
    EXPECT_TRUE(encoder->set_option("dither.enabled", 0));
    EXPECT_TRUE(encoder->set_option("sample_rate", 1000));
    return encoder;
}

Frames frames_of(std::uint64_t layout, std::size_t size = 256, unsigned seed = 0) {
    Frames frames;
    EXPECT_TRUE(api::SpeakerLayout(layout).each_channel([&](const api::Channel& channel) {
        frames.set(encode::frame_of(channel, music(size, seed + channel.id())));
        return true;
    }));
    return frames;
}

TEST(EncoderOptions, RangesAreToldOnStandardError) {
    const auto encoder = make(mono, mono);
    for (const char* const key : {"bitline.min", "bitline.max"})
        for (const auto& [value, ok] :
             {std::pair(2, false), std::pair(3, true), std::pair(12, true), std::pair(13, false),
              std::pair(-1, false)}) {
            testing::internal::CaptureStderr();
            EXPECT_EQ(encoder->set_option(key, value), ok);
            const std::string message = std::string(key) + " is out of the allowed range [3,12]\n";
            EXPECT_EQ(testing::internal::GetCapturedStderr(), ok ? "" : message);
        }
}

TEST(EncoderOptions, TakesKnownKeysOnly) {
    const auto encoder = make(mono, mono);
    for (const char* const key : {"gvm.allow_merge", "gvm.update_all", "gvm.force_origin_center",
                                  "gvm.randomize_deltas", "dither.enabled", "native_content"})
        EXPECT_TRUE(encoder->set_option(key, 1)) << key;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(encoder->set_option("gvm.centers_max", 0));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "silently";
    EXPECT_TRUE(encoder->set_option("gvm.centers_max", 1));
    EXPECT_TRUE(encoder->set_option("gvm.implementation", std::string("anything")));
    EXPECT_FALSE(encoder->set_option("threads", 1));
    EXPECT_FALSE(encoder->set_option("output.deltas", std::string("x")));
}

TEST(Encoder, GainsOutsideTheTableAreRefused) {
    const auto encoder = make(mono, mono);
    const ChannelVariant center(api::channel::Center);
    for (const auto& [gain, ok] : {std::pair(1.0f, true), std::pair(16.0f, true),
                                   std::pair(0.99f, false), std::pair(16.1f, false)})
        EXPECT_EQ(encoder->set_attn(center, gain), ok) << gain;
    EXPECT_TRUE(encoder->set_meta(api::channel::Left, 99.0f)) << "no carrier channel: ignored";
    EXPECT_TRUE(encoder->set_meta(api::channel::Center, 0.0f));
}

TEST(Encoder, LoudnessOfAFourthDimensionIsRefused) {
    const auto encoder = make(mono, mono);
    api::loudness::Value value;
    value.set_dimension(9);
    EXPECT_TRUE(encoder->update_loudness(value)) << "a default value is of no parameter";
    value.set_parameter(api::loudness::Parameter::ProgramLoudness);
    EXPECT_FALSE(encoder->update_loudness(value));
    value.set_dimension(3);
    EXPECT_TRUE(encoder->update_loudness(value));
}

TEST(Encoder, FrameInFrameOut) {
    const auto encoder = make(lcr, stereo);
    Frames out;
    for (unsigned frame = 0; frame < 3; ++frame) {
        ASSERT_TRUE(encoder->encode_one(out, frames_of(lcr, 256, frame)));
        ASSERT_EQ(out.size(), 2u);
        for (const auto& [key, carrier] : out) {
            EXPECT_EQ(carrier.size(), 256u);
            EXPECT_EQ(carrier.bit_depth, 24u);
        }
    }
    double figure = 0;
    EXPECT_TRUE(encoder->get_quality_metric(figure, ChannelVariant(api::channel::Center),
                                            QualityMetric::db_rms));
    EXPECT_LT(figure, -40);
    figure = 7;
    EXPECT_TRUE(encoder->get_quality_metric(figure, ChannelVariant(api::channel::Center),
                                            QualityMetric(9)));
    EXPECT_EQ(figure, 7) << "an unknown metric leaves it alone";
    EXPECT_FALSE(encoder->get_quality_metric(figure, ChannelVariant(api::channel::LFE),
                                             QualityMetric::crest));
}

TEST(Encoder, OtherDepthsThan24BitsAreRefusedInWords) {
    const auto encoder = make(lcr, stereo);
    Frames out;
    auto frames = frames_of(lcr);
    for (auto& [key, frame] : frames)
        frame.bit_depth = 16;
    testing::internal::CaptureStdout();
    EXPECT_FALSE(encoder->encode_one(out, frames));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Only 24bit input is supported, not 16\n");

    frames.begin()->second.bit_depth = 24;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(encoder->encode_one(out, frames));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not get the bit depth of the input frames\n");
}

TEST(Encoder, AFrameFailsWithoutAllItsChannelsOrWithTwoSizes) {
    Frames out;
    EXPECT_FALSE(make(lcr, stereo)->encode_one(out, frames_of(stereo)));
    auto frames = frames_of(lcr);
    frames.set(encode::frame_of(api::channel::Right, music(128, 1)));
    EXPECT_FALSE(make(lcr, stereo)->encode_one(out, frames));
}

TEST(Encoder, WithoutACandidateThatFitsTheFrameFails) {
    Frames out;
    EXPECT_FALSE(make(testmix2, mono, 9, 8)->encode_one(out, frames_of(testmix2)))
        << "an empty range of bit-lines";
    EXPECT_FALSE(make(testmix2, mono, 3, 3)->encode_one(out, frames_of(testmix2)))
        << "three bit-lines of 256 samples hold no record of two channels";
    std::shared_ptr<IEncoder> encoder;
    ASSERT_TRUE(create(encoder, api::SpeakerLayout(mono), api::SpeakerLayout(mono), 0));
    ASSERT_TRUE(encoder->set_option("sample_rate", 48000));
    EXPECT_FALSE(encoder->encode_one(out, frames_of(mono))) << "no range was set";
}

TEST(Encoder, WithoutAttenuationSamplesGoInAsTheyAre) {
    const auto encoder = make(mono, mono, 3, 3);
    const auto in = frames_of(mono);
    const ChannelVariant center(api::channel::Center);
    ASSERT_TRUE(encoder->set_attn(center, 1.0f));
    Frames out;
    ASSERT_TRUE(encoder->encode_one(out, in));
    for (std::size_t t = 0; t < 256; ++t)
        EXPECT_EQ(out.find(center)->samples()[t] >> 3, in.find(center)->samples()[t] >> 3);
}

TEST(Encoder, TheAttenuationLeavesTheInputAlone) {
    const auto encoder = make(mono, mono, 3, 3);
    const auto in = frames_of(mono);
    const ChannelVariant center(api::channel::Center);
    const auto before = encode::samples_of(*in.find(center));
    ASSERT_TRUE(encoder->set_attn(center, 2.0f));
    Frames out;
    ASSERT_TRUE(encoder->encode_one(out, in));
    EXPECT_EQ(encode::samples_of(*in.find(center)), before);
    EXPECT_EQ(out.find(center)->samples()[9] >> 3, before[9] / 2 >> 3);
}

std::vector<std::vector<int>> encode_on(unsigned nr_threads) {
    // One count of bit-lines, and deltas in time order: the order of work then cannot matter.
    const auto encoder = make(lcr, stereo, 8, 8, nr_threads);
    EXPECT_TRUE(encoder->set_option("gvm.randomize_deltas", 0));
    std::vector<std::vector<int>> carriers;
    Frames out;
    for (unsigned frame = 0; frame < 4; ++frame) {
        EXPECT_TRUE(encoder->encode_one(out, frames_of(lcr, 256, frame)));
        for (const auto& [key, carrier] : out)
            carriers.push_back(encode::samples_of(carrier));
    }
    return carriers;
}

TEST(EncoderThreads, GiveTheSameCarriersAsNone) {
    const auto inline_carriers = encode_on(0);
    for (const unsigned nr_threads : {1u, 2u, 16u})
        EXPECT_EQ(encode_on(nr_threads), inline_carriers);
}

TEST(EncoderThreads, SearchTheWholeRangeOnManyThreads) {
    const auto encoder = make(lcr, stereo, 3, 12, 16);
    Frames out;
    for (unsigned frame = 0; frame < 4; ++frame)
        EXPECT_TRUE(encoder->encode_one(out, frames_of(lcr, 1024, frame)));
}

#ifdef VELA_TEST_SWITCHES

/// Encodes frames of mono and gives what the log says of each winner.
std::vector<std::string> winners(int nr_frames, void (*before)(IEncoder&, int frame)) {
    const std::string log = testing::TempDir() + "Encoder_test.jsonl";
    setenv("VELA_CANDIDATES", log.c_str(), 1);
    const auto encoder = make(mono, mono);
    unsetenv("VELA_CANDIDATES");
    Frames out;
    for (int frame = 0; frame < nr_frames; ++frame) {
        before(*encoder, frame);
        EXPECT_TRUE(encoder->encode_one(out, frames_of(mono)));
    }
    std::vector<std::string> lines;
    std::ifstream in(log);
    for (std::string line; std::getline(in, line);)
        if (line.find("\"winner\":true") != std::string::npos) lines.push_back(line);
    return lines;
}

std::vector<int> meta_words(const std::vector<std::string>& lines) {
    std::vector<int> words;
    for (const auto& line : lines)
        words.push_back(std::stoi(line.substr(line.find("\"meta\":") + 7)));
    return words;
}

// A period of 958 samples is four frames of 256.
TEST(Encoder, TheMetaWordIsSentOnChangeAndEveryPeriod) {
    const auto steady = winners(9, [](IEncoder& encoder, int) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.5f));
    });
    EXPECT_EQ(meta_words(steady), (std::vector<int>{0x20, -1, -1, -1, 0x20, -1, -1, -1, 0x20}));

    const auto changed = winners(6, [](IEncoder& encoder, int frame) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, frame < 2 ? 1.5f : 2.0f));
    });
    EXPECT_EQ(meta_words(changed), (std::vector<int>{0x20, -1, 0x40, -1, -1, -1}));
}

TEST(Encoder, AFrameWithoutAMetaCallSendsZeroAsAChange) {
    const auto lines = winners(3, [](IEncoder& encoder, int frame) {
        if (frame == 0) {
            EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.5f));
        }
    });
    EXPECT_EQ(meta_words(lines), (std::vector<int>{0x20, 0, -1}));
}

TEST(Encoder, CallsWithinOneFrameAddUpBitByBit) {
    const auto lines = winners(1, [](IEncoder& encoder, int) {
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.5f));  // code 2
        EXPECT_TRUE(encoder.set_meta(api::channel::Center, 1.2f));  // code 1
    });
    EXPECT_EQ(meta_words(lines), (std::vector<int>{0x30}));
}

TEST(Encoder, TheSearchStartsWhereTheFrameBeforeEnded) {
    const std::string log = testing::TempDir() + "Encoder_test_centers.jsonl";
    setenv("VELA_CANDIDATES", log.c_str(), 1);
    const auto encoder = make(testmix2, mono, 8, 8);
    unsetenv("VELA_CANDIDATES");
    Frames out;
    std::vector<int> starts, centers, previous;
    for (int frame = 0; frame < 3; ++frame)
        ASSERT_TRUE(encoder->encode_one(out, frames_of(testmix2)));
    std::ifstream in(log);
    const auto number = [](const std::string& line, const std::string& key) {
        return std::stoi(line.substr(line.find('"' + key + "\":") + key.size() + 3));
    };
    for (std::string line; std::getline(in, line);) {
        if (line.find("\"winner\"") != std::string::npos) continue;
        starts.push_back(number(line, "start"));
        centers.push_back(number(line, "centers"));
        previous.push_back(number(line, "prev_b"));
    }
    ASSERT_EQ(starts.size(), 3u) << "one candidate a frame";
    EXPECT_EQ(starts[0], 100);
    EXPECT_EQ(starts[1], centers[0] + 20);
    EXPECT_EQ(starts[2], centers[1] + 20);
    EXPECT_EQ(previous, (std::vector<int>{10, 8, 8}));
}

#endif

}  // namespace
}  // namespace vela::codec::v3::encoder
