#include <string>
#include <utility>
#include <vela/codec/v3/lib/encoder/encoders.hpp>
#include <vela/thread/processors.hpp>

namespace vela::codec::v3::encoder {
namespace {

using api::ChannelVariant;
using encode::Frames;
using encode::music;

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

TEST(Encoder, LoudnessHasFourDimensions) {
    const auto encoder = make(mono, mono);
    api::loudness::Value value;
    value.set_dimension(4);
    EXPECT_TRUE(encoder->update_loudness(value)) << "a default value is of no parameter";
    value.set_parameter(api::loudness::Parameter::ProgramLoudness);
    for (const auto& [dimension, ok] :
         {std::pair(0u, true), std::pair(3u, true), std::pair(4u, false), std::pair(9u, false)}) {
        value.set_dimension(dimension);
        EXPECT_EQ(encoder->update_loudness(value), ok) << dimension;
    }
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
    const auto without_range = make(testmix2, mono, 9, 8);
    for (int i = 0; i < 5; ++i)
        EXPECT_FALSE(without_range->encode_one(out, frames_of(testmix2, 256, 1)));
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

// Whoever writes to samples that the encoder shares gets others, as long as it has them.
TEST(Encoder, SharesTheSamplesOfWhatIsNotAttenuated) {
    for (const float gain : {1.0f, 2.0f}) {
        const auto encoder = make(mono, mono, 3, 3);
        auto in = frames_of(mono);
        const ChannelVariant center(api::channel::Center);
        ASSERT_TRUE(encoder->set_attn(center, gain));
        Frames out;
        ASSERT_TRUE(encoder->encode_one(out, in));
        const int* const samples = in.find(center)->samples().data();
        EXPECT_EQ(in.goc(center).write().data() != samples, gain == 1.0f);
    }
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

TEST(Encoder, AFrameMayHaveAnotherSizeThanTheOneBefore) {
    const auto encoder = make(lcr, stereo);
    Frames out;
    for (const std::size_t size : {256, 1024, 128, 512}) {
        ASSERT_TRUE(encoder->encode_one(out, frames_of(lcr, size))) << size;
        for (const auto& [key, carrier] : out)
            EXPECT_EQ(carrier.size(), size);
    }
}

TEST(Encoder, OptionsHoldFromTheNextFrameOn) {
    std::vector<std::vector<int>> second;
    for (const auto& [first_max, second_max] :
         {std::pair(150, 1), std::pair(1, 1), std::pair(150, 150)}) {
        const auto encoder = make(testmix2, mono, 8, 8);
        ASSERT_TRUE(encoder->set_option("gvm.randomize_deltas", 0));
        Frames out;
        for (const auto max : {first_max, second_max}) {
            ASSERT_TRUE(encoder->set_option("gvm.centers_max", max));
            ASSERT_TRUE(encoder->encode_one(out, frames_of(testmix2, 256, 1)));
        }
        second.push_back(encode::samples_of(out.begin()->second));
    }
    EXPECT_EQ(second[0], second[1]);
    EXPECT_NE(second[0], second[2]);

    const auto encoder = make(mono, mono);
    for (const bool dither : {true, false, true}) {
        Frames out;
        ASSERT_TRUE(encoder->set_option("dither.enabled", dither ? 1 : 0));
        ASSERT_TRUE(encoder->encode_one(out, frames_of(mono)));
        EXPECT_EQ(record_of(out, api::channel::Center).dither_enabled, dither);
    }
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

TEST(EncoderThreads, OneFailedCandidateFailsTheFrame) {
    for (const unsigned nr_threads : {0u, 1u, 4u}) {
        const auto encoder = make(lcr, stereo, 8, 9, nr_threads);
        ASSERT_TRUE(encoder->set_option("gvm.implementation", std::string("anything")));
        Frames out;
        EXPECT_FALSE(encoder->encode_one(out, frames_of(lcr)));
        EXPECT_TRUE(out.empty());
    }
}

TEST(EncoderThreads, AFailedCandidateDoesNotFailTheNextFrame) {
    for (const unsigned nr_threads : {0u, 2u}) {
        const auto encoder = make(lcr, stereo, 8, 9, nr_threads);
        Frames out;
        for (const auto& [implementation, ok] :
             {std::pair("fast", true), std::pair("anything", false), std::pair("ref", true)}) {
            ASSERT_TRUE(encoder->set_option("gvm.implementation", std::string(implementation)));
            EXPECT_EQ(encoder->encode_one(out, frames_of(lcr)), ok);
        }
    }
}

// The winner of a carrier may be serialised while others are still looked for: a refusal counts.
TEST(EncoderThreads, ARecordThatIsRefusedFailsTheFrame) {
    for (const unsigned nr_threads : {0u, 1u, 2u, 16u}) {
        const auto encoder = make(lcr, stereo, 8, 9, nr_threads);
        ASSERT_TRUE(encoder->set_room_type(api::RoomType(4)));
        Frames out;
        EXPECT_FALSE(encoder->encode_one(out, frames_of(lcr)));
        EXPECT_TRUE(out.empty());
    }
}

TEST(EncoderThreads, GoOnAfterAFrameThatCannotBegin) {
    for (const unsigned nr_threads : {0u, 2u, 16u}) {
        const auto encoder = make(lcr, stereo, 3, 12, nr_threads);
        auto shallow = frames_of(lcr);
        for (auto& [key, frame] : shallow)
            frame.bit_depth = 16;
        for (const auto& bad : {Frames{}, frames_of(stereo), shallow}) {
            Frames out;
            EXPECT_FALSE(encoder->encode_one(out, bad));
            EXPECT_TRUE(out.empty());
            EXPECT_TRUE(encoder->encode_one(out, frames_of(lcr)));
        }
    }
}

// With one thread at work at a time nobody would gain by the next frame.
TEST(EncoderThreads, TakeAsManyFramesAsTheySay) {
    const unsigned most = thread::nr_processors() < 2 ? 1 : 4;
    for (const auto& [nr_threads, max] :
         {std::pair(0u, 1u), std::pair(1u, 1u), std::pair(2u, most)}) {
        const auto encoder = make(lcr, stereo, 8, 9, nr_threads);
        EXPECT_EQ(encoder->max_under_way(), max);
        Frames out;
        EXPECT_FALSE(encoder->end_one(out)) << "none was begun";
        for (unsigned i = 0; i < max; ++i)
            EXPECT_TRUE(encoder->begin_one(frames_of(lcr)));
        EXPECT_FALSE(encoder->begin_one(frames_of(lcr)));
        for (unsigned i = 0; i < max; ++i)
            EXPECT_TRUE(encoder->end_one(out));
        EXPECT_FALSE(encoder->end_one(out));
    }
}

/// All carriers of ten frames, each with metadata of its own, up to `nr_ahead` begun ahead.
std::vector<std::vector<int>> encode_ahead(unsigned nr_threads, unsigned nr_ahead) {
    const auto encoder = make(lcr, stereo, 8, 8, nr_threads);
    EXPECT_TRUE(encoder->set_option("gvm.randomize_deltas", 0));
    std::vector<std::vector<int>> carriers;
    unsigned nr_begun = 0;
    for (unsigned frame = 0; frame < 10; ++frame) {
        for (; nr_begun < 10 && nr_begun <= frame + nr_ahead; ++nr_begun) {
            EXPECT_TRUE(encoder->set_orbimix_preset(static_cast<int>(nr_begun / 2)));
            EXPECT_TRUE(encoder->set_attn(api::ChannelVariant(api::channel::Center),
                                          1.0f + 0.1f * static_cast<float>(nr_begun)));
            EXPECT_TRUE(encoder->set_meta(api::channel::Left, 1.0f + static_cast<float>(nr_begun)));
            EXPECT_TRUE(encoder->begin_one(frames_of(lcr, 256, nr_begun)));
        }
        Frames out;
        EXPECT_TRUE(encoder->end_one(out));
        for (const auto& [key, carrier] : out)
            carriers.push_back(encode::samples_of(carrier));
    }
    return carriers;
}

// What a frame tells, and chooses, hangs on those before it alone.
TEST(EncoderThreads, FramesBegunAheadAreTheSame) {
    const auto one_by_one = encode_ahead(0, 0);
    EXPECT_EQ(one_by_one.size(), 20u);
    EXPECT_EQ(encode_ahead(2, 0), one_by_one);
    if (thread::nr_processors() < 2) GTEST_SKIP() << "needs two processors";
    for (const unsigned nr_threads : {2u, 3u, 16u})
        for (const unsigned nr_ahead : {1u, 2u, 3u})
            EXPECT_EQ(encode_ahead(nr_threads, nr_ahead), one_by_one);
}

/// Begins a frame that will fail at its end.
struct Failure {
    const char* name;
    bool (*begin)(IEncoder&);
};

class EncoderThreadsFailure : public testing::TestWithParam<Failure> {};

/// All carriers of nine frames, one of which fails: with threads others are under way with it, and
/// some take its place in memory later.
std::vector<std::vector<int>> encode_beside(const Failure& failure, unsigned failing,
                                            unsigned nr_threads) {
    constexpr unsigned nr_frames = 9;
    const auto encoder = make(lcr, stereo, 8, 9, nr_threads);
    EXPECT_TRUE(encoder->set_option("gvm.randomize_deltas", 0));
    std::vector<std::vector<int>> carriers;
    unsigned nr_begun = 0;
    for (unsigned frame = 0; frame < nr_frames; ++frame) {
        for (; nr_begun < nr_frames && nr_begun - frame < encoder->max_under_way(); ++nr_begun) {
            EXPECT_TRUE(encoder->set_room_type(api::RoomType(0)));
            EXPECT_TRUE(nr_begun == failing ? failure.begin(*encoder)
                                            : encoder->begin_one(frames_of(lcr, 256, nr_begun)));
        }
        Frames out;
        EXPECT_EQ(encoder->end_one(out), frame != failing);
        EXPECT_EQ(out.empty(), frame == failing);
        for (const auto& [key, carrier] : out)
            carriers.push_back(encode::samples_of(carrier));
    }
    return carriers;
}

TEST_P(EncoderThreadsFailure, LeavesTheFramesBesideIt) {
    for (const unsigned failing : {0u, 3u, 4u, 8u}) {
        const auto one_by_one = encode_beside(GetParam(), failing, 0);
        EXPECT_EQ(one_by_one.size(), 2 * 8u);
        for (const unsigned nr_threads : {2u, 3u, 16u})
            EXPECT_EQ(encode_beside(GetParam(), failing, nr_threads), one_by_one);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, EncoderThreadsFailure,
    testing::Values(Failure{"ARefusedRecord",
                            [](IEncoder& encoder) {
                                return encoder.set_room_type(api::RoomType(4)) &&
                                       encoder.begin_one(frames_of(lcr));
                            }},
                    Failure{"AFailedCandidate",
                            [](IEncoder& encoder) { return encoder.begin_one(frames_of(lcr, 3)); }},
                    Failure{
                        "NoWinner",
                        [](IEncoder& encoder) { return encoder.begin_one(frames_of(lcr, 32)); }}),
    [](const auto& param) { return param.param.name; });

TEST(EncoderThreads, AFrameThatCannotBeginLeavesThoseUnderWay) {
    if (thread::nr_processors() < 2) GTEST_SKIP() << "needs two processors";
    for (const auto& bad : {Frames{}, frames_of(stereo)}) {
        const auto encoder = make(lcr, stereo, 8, 8, 2);
        ASSERT_TRUE(encoder->set_option("gvm.randomize_deltas", 0));
        const auto twin = make(lcr, stereo, 8, 8);
        ASSERT_TRUE(twin->set_option("gvm.randomize_deltas", 0));
        ASSERT_TRUE(encoder->begin_one(frames_of(lcr)));
        EXPECT_FALSE(encoder->begin_one(bad));
        EXPECT_TRUE(encoder->begin_one(frames_of(lcr, 256, 1)));
        for (unsigned frame = 0; frame < 2; ++frame) {
            Frames out, alone;
            ASSERT_TRUE(encoder->end_one(out));
            ASSERT_TRUE(twin->encode_one(alone, frames_of(lcr, 256, frame)));
            EXPECT_EQ(encode::samples_of(*out.find(ChannelVariant(api::channel::Left))),
                      encode::samples_of(*alone.find(ChannelVariant(api::channel::Left))));
        }
    }
}

// A run that fails leaves them behind.
TEST(EncoderThreads, FramesThatNobodyEndsGoWithTheEncoder) {
    if (thread::nr_processors() < 2) GTEST_SKIP() << "needs two processors";
    for (int i = 0; i < 20; ++i) {
        const auto encoder = make(lcr, stereo, 3, 12, 2);
        for (unsigned frame = 0; frame < encoder->max_under_way(); ++frame)
            EXPECT_TRUE(encoder->begin_one(frames_of(lcr, 256, frame)));
        Frames out;
        for (int ended = 0; ended < i % 3; ++ended)
            EXPECT_TRUE(encoder->end_one(out));
    }
}

TEST(EncoderThreads, SearchTheWholeRangeOnManyThreads) {
    const auto encoder = make(lcr, stereo, 3, 12, 16);
    Frames out;
    for (unsigned frame = 0; frame < 4; ++frame)
        EXPECT_TRUE(encoder->encode_one(out, frames_of(lcr, 1024, frame)));
}

// Which thread ends last differs from frame to frame; a winner that nobody serialised fails one.
TEST(EncoderThreads, EveryWinnerIsSerialisedWhoeverEndsLast) {
    for (const unsigned nr_threads : {2u, 3u}) {
        const auto encoder = make(lcr, stereo, 8, 9, nr_threads);
        Frames out;
        for (unsigned frame = 0; frame < 100 && !HasFailure(); ++frame)
            EXPECT_TRUE(encoder->encode_one(out, frames_of(lcr, 256, frame)));
    }
}

}  // namespace
}  // namespace vela::codec::v3::encoder
