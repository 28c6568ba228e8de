#include <gtest/gtest.h>

#include <app/FrameLowpass.hpp>
#include <random>
#include <sstream>
#include <vela/filter/lowpass/create_normal.hpp>
#include <vela/numeric/truncate.hpp>

namespace app {
namespace {

using vela::audio::Frames;
using vela::filter::lowpass::Type;

const vela::api::ChannelVariant key(vela::api::channel::Left);

std::vector<int> random_samples(std::size_t count) {
    std::mt19937 engine(7);
    std::vector<int> samples(count);
    for (int& x : samples)
        x = static_cast<int>(engine() >> 8) - (1 << 23);
    return samples;
}

/// All blocks through the lowpass, as the run does it.
std::vector<int> filter_in_blocks(Type type, unsigned freq, const std::vector<int>& in,
                                  std::size_t size) {
    FrameLowpass lowpass(type, freq, 48000);
    std::ostringstream messages;
    Frames input, current, upcoming;
    std::vector<int> out;
    const auto take = [&] {
        const auto samples = current.find(key)->samples();
        out.insert(out.end(), samples.begin(), samples.end());
    };
    for (std::size_t at = 0; at < in.size(); at += size) {
        const auto begin = in.begin() + static_cast<std::ptrdiff_t>(at);
        input.goc(key, size, 24).set_data(begin, begin + static_cast<std::ptrdiff_t>(size));
        EXPECT_TRUE(lowpass.feed(current, upcoming, input, messages));
        if (at > 0) take();
        current = upcoming;
    }
    EXPECT_TRUE(lowpass.flush(current));
    take();
    EXPECT_EQ(messages.str(), "");
    return out;
}

/// One pass over everything, zeros behind it, the delay's worth of answers dropped.
std::vector<int> filter_whole(Type type, unsigned freq, const std::vector<int>& in) {
    const auto filter = vela::filter::lowpass::create_normal<double>(type, freq, 48000);
    std::vector<int> out;
    for (std::size_t t = 0; t < in.size() + filter->delay(); ++t) {
        const double answer = (*filter)(t < in.size() ? in[t] : 0);
        if (t >= filter->delay()) out.push_back(vela::numeric::truncate_to_int32(answer));
    }
    return out;
}

TEST(FrameLowpass, TheBlocksTogetherAreTheSignalWithTheDelayTakenOut) {
    const auto in = random_samples(720);
    for (const auto& [type, freq] :
         {std::pair(Type::None, 0u), std::pair(Type::FIR, 18000u), std::pair(Type::IIR, 20000u)})
        // 39 is the delay of that FIR filter: then a block is answers to the next block alone.
        for (const std::size_t size : {39u, 40u, 48u, 720u}) {
            if (720 % size != 0 && size != 39) continue;
            const std::vector<int> whole_blocks(
                in.begin(), in.begin() + static_cast<std::ptrdiff_t>(720 / size * size));
            EXPECT_EQ(filter_in_blocks(type, freq, whole_blocks, size),
                      filter_whole(type, freq, whole_blocks))
                << size;
        }
}

TEST(FrameLowpass, WithoutAFilterTheSamplesAreShared) {
    FrameLowpass lowpass(Type::None, 0, 48000);
    std::ostringstream messages;
    Frames input, current, upcoming;
    input.goc(key, 8, 24).write()[3] = 5;
    ASSERT_TRUE(lowpass.feed(current, upcoming, input, messages));
    EXPECT_EQ(upcoming.find(key)->samples().data(), input.find(key)->samples().data());
    EXPECT_EQ(upcoming.find(key)->bit_depth, 24u);
    input.goc(key).write()[3] = 6;
    EXPECT_EQ(upcoming.find(key)->samples()[3], 5) << "the next block is read into `input`";
}

TEST(FrameLowpass, ABlockShorterThanTheDelayIsRefusedInWords) {
    FrameLowpass lowpass(Type::FIR, 18000, 48000);
    std::ostringstream messages;
    Frames input, current, upcoming;
    input.goc(key, 38, 24);
    EXPECT_FALSE(lowpass.feed(current, upcoming, input, messages));
    EXPECT_EQ(messages.str(), "The frame size (38) cannot be smaller than the filter delay 39\n");
}

TEST(FrameLowpass, AFilterThatDoesNotExistIsRefusedInWords) {
    FrameLowpass lowpass(Type::IIR, 1, 2);
    std::ostringstream messages;
    Frames input, current, upcoming;
    input.goc(key, 8, 24);
    EXPECT_FALSE(lowpass.feed(current, upcoming, input, messages));
    EXPECT_EQ(messages.str(),
              "ERROR: Could not create the lowpass: {settings.lowpass_type: IIR}"
              "{settings.lowpass_freq: 1}{sample_rate: 2}");
}

TEST(FrameLowpass, AChannelThatWasNeverFilteredCannotBeFlushed) {
    FrameLowpass lowpass(Type::None, 0, 48000);
    Frames current;
    EXPECT_TRUE(lowpass.flush(current)) << "nothing to flush";
    current.goc(key, 8, 24);
    EXPECT_FALSE(lowpass.flush(current));
}

}  // namespace
}  // namespace app
