#include <gtest/gtest.h>

#include <algorithm>
#include <app/WavOutput.hpp>
#include <filesystem>
#include <vela/file/read.hpp>

namespace app {
namespace {

using vela::api::Channel;
using vela::api::ChannelVariant;
using vela::api::SpeakerLayout;
namespace id = vela::api::channel::id;

class WavOutputTest : public testing::Test {
protected:
    void SetUp() override {
        folder_ = testing::TempDir() + "WavOutput/";
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
    }

    WavOutput make(std::uint64_t mask, bool multi_channel = false) const {
        WavOutput output;
        output.filename = vela::file::Name(folder_ + "x_");
        output.layout = SpeakerLayout(mask);
        output.sample_rate = 48000;
        output.multi_channel = multi_channel;
        return output;
    }

    /// Two samples per channel: 16 * id and 16 * id + 1.
    static vela::audio::Frames frames_of(std::uint64_t mask) {
        vela::audio::Frames frames;
        EXPECT_TRUE(SpeakerLayout(mask).each_channel([&](const Channel& channel) {
            const auto samples = frames.goc(ChannelVariant(channel), 2, 24).write();
            samples[0] = 16 * static_cast<int>(channel.id());
            samples[1] = samples[0] + 1;
            return true;
        }));
        return frames;
    }

    std::string read(const std::string& name) const {
        std::string bytes;
        EXPECT_TRUE(vela::file::read(bytes, vela::file::Name(folder_ + name)));
        return bytes;
    }

    /// The first byte of each sample.
    std::vector<int> low_bytes(const std::string& name) const {
        std::vector<int> bytes;
        const auto file = read(name);
        for (std::size_t at = 44; at + 2 < file.size(); at += 3)
            bytes.push_back(static_cast<unsigned char>(file[at]));
        return bytes;
    }

    std::string folder_;
};

constexpr std::uint64_t layout_7_1 = 0x1BF;

TEST_F(WavOutputTest, OneMonoFilePerChannel) {
    {
        auto output = make(layout_7_1);
        ASSERT_TRUE(output.prepare());
        ASSERT_TRUE(output.prepare()) << "a second time changes nothing";
        ASSERT_TRUE(output.append(frames_of(layout_7_1)));
    }
    for (const auto& [name, number] :
         {std::pair("L", 0), std::pair("R", 1), std::pair("C", 2), std::pair("LFE", 3),
          std::pair("Ls", 4), std::pair("Rs", 5), std::pair("Lb", 7), std::pair("Rb", 8)})
        EXPECT_EQ(low_bytes(std::string("x_") + name + ".wav"),
                  (std::vector<int>{16 * number, 16 * number + 1}));
}

// The back pair stands before the side pair, although its ids are higher.
TEST_F(WavOutputTest, OneInterleavedFileInTheOrderOfTheWaveMask) {
    {
        auto output = make(layout_7_1, true);
        ASSERT_TRUE(output.prepare());
        ASSERT_TRUE(output.append(frames_of(layout_7_1)));
    }
    std::vector<int> expected;
    for (const int sample : {0, 1})
        for (const int number : {0, 1, 2, 3, 7, 8, 4, 5})
            expected.push_back(16 * number + sample);
    EXPECT_EQ(low_bytes("x_.wav"), expected);

    const auto header = read("x_.wav").substr(20, 16);
    EXPECT_EQ(header, std::string("\x01\0\x08\0\x80\xBB\0\0\0\x94\x11\0\x18\0\x18\0", 16));
}

TEST_F(WavOutputTest, IsNotPreparedWithoutPrefixRateOrLayout) {
    auto no_prefix = make(3);
    no_prefix.filename = {};
    auto no_rate = make(3);
    no_rate.sample_rate.reset();
    auto no_layout = make(0xFFu << 25);
    for (WavOutput* const output : {&no_prefix, &no_rate, &no_layout}) {
        EXPECT_FALSE(output->prepare());
        EXPECT_FALSE(output->append(frames_of(3)));
    }
}

TEST_F(WavOutputTest, AChannelWithoutAPlaceInWaveIsRefused) {
    for (const auto channel : {id::HeightCenter, id::Top, id::CenterSurround, id::Ambisonics})
        for (const bool multi_channel : {false, true}) {
            auto output = make(1u | 1u << channel, multi_channel);
            EXPECT_FALSE(output.prepare());
            EXPECT_FALSE(output.append(frames_of(1))) << "nothing is left of the preparation";
        }
}

TEST_F(WavOutputTest, OnlyMainSignalsReachTheFiles) {
    auto frames = frames_of(1);
    frames.goc(ChannelVariant(vela::api::channel::Left, 1), 2, 24).write()[0] = 99;
    {
        auto output = make(1);
        ASSERT_TRUE(output.prepare());
        ASSERT_TRUE(output.append(frames));
    }
    EXPECT_EQ(low_bytes("x_L.wav"), (std::vector<int>{0, 1}));
}

TEST_F(WavOutputTest, AMissingChannelOrSamplesTooWideAreRefused) {
    for (const bool multi_channel : {false, true}) {
        auto output = make(3, multi_channel);
        ASSERT_TRUE(output.prepare());
        EXPECT_FALSE(output.append(frames_of(1)));
        EXPECT_FALSE(output.append(vela::audio::Frames()));

        auto wide = frames_of(3);
        wide.goc(ChannelVariant(vela::api::channel::Right)).write()[1] = 0x800000;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(output.append(wide));
        EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("Clipping detected: ", 0), 0u);
    }
}

}  // namespace
}  // namespace app
