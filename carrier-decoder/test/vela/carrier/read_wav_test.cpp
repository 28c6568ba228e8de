#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <vela/carrier/read_wav.hpp>

namespace vela::carrier {
namespace {

/// A file that goes when the test ends; its name is the process's own.
class TempFile {
public:
    explicit TempFile(const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() /
                ("read_wav_" + std::to_string(getpid()) + ".wav")) {
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~TempFile() { std::filesystem::remove(path_); }

    [[nodiscard]] file::Name name() const { return file::Name(path_.string()); }

private:
    std::filesystem::path path_;
};

std::string little(std::uint32_t value, unsigned bytes) {
    std::string out;
    for (unsigned i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> 8 * i & 0xFFu));
    return out;
}

/// Two channels of two samples each.
std::string stereo(std::uint32_t bits) {
    const std::string data =
        little(1, 3) + little(0xFFFFFE, 3) + little(0x7FFFFF, 3) + little(0x800000, 3);
    return "RIFF" + little(36 + 12, 4) + "WAVEfmt " + little(16, 4) + little(1, 2) + little(2, 2) +
           little(48000, 4) + little(48000 * 2 * bits / 8, 4) + little(2 * bits / 8, 2) +
           little(bits, 2) + "data" + little(12, 4) + data;
}

TEST(ReadWav, GivesEachChannelOfTheFile) {
    const TempFile file(stereo(24));
    WavFile wav;
    std::string why;
    ASSERT_TRUE(read_wav(wav, why, file.name())) << why;
    EXPECT_EQ(wav.sample_rate, 48000u);
    EXPECT_EQ(wav.channels, (std::vector<std::vector<int>>{{1, 0x7FFFFF}, {-2, -0x800000}}));
}

TEST(ReadWav, RefusesOtherWidthsSinceCarriersHave24Bits) {
    const TempFile file(stereo(16));
    WavFile wav;
    std::string why;
    EXPECT_FALSE(read_wav(wav, why, file.name()));
    EXPECT_EQ(why, file.name().str() + " has 16 bits, not 24");
}

TEST(ReadWav, RefusesWhatIsNoWavFile) {
    const TempFile file(stereo(24).substr(0, 30));
    WavFile wav;
    std::string why;
    EXPECT_FALSE(read_wav(wav, why, file.name()));
    EXPECT_EQ(why, file.name().str() + " is no PCM WAV file");
    EXPECT_FALSE(read_wav(wav, why, file::Name("no/such/file.wav")));
}

TEST(Interleaving, PutsTheBackPairBeforeTheSidePair) {
    using namespace api::channel::id;
    EXPECT_EQ(interleaving_of(api::SpeakerLayout(0x1BF)),
              (std::vector<ChannelId>{Left, Right, Center, LFE, LeftBack, RightBack, LeftSurround,
                                      RightSurround}));
    EXPECT_EQ(interleaving_of(api::SpeakerLayout(0xB)), (std::vector<ChannelId>{Left, Right, LFE}));
}

}  // namespace
}  // namespace vela::carrier
