#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>
#include <vela/codec/v3/lib/CarrierRecord.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encoder/Factory.hpp>

/// Encoders and input for the tests of the encoder.
namespace vela::codec::v3::encoder {

constexpr std::uint64_t mono = 0x4;
constexpr std::uint64_t stereo = 0x3;
constexpr std::uint64_t lcr = 0x7;
constexpr std::uint64_t testmix2 = 0x804;
constexpr std::uint64_t testmix3 = 0x1804;

/// Without dither, at 1000 samples a second: metadata returns after 958 samples.
inline std::shared_ptr<IEncoder> make(std::uint64_t input, std::uint64_t carrier,
                                      int bitline_min = 8, int bitline_max = 9,
                                      unsigned nr_threads = 0, int sample_rate = 1000) {
    std::shared_ptr<IEncoder> encoder;
    EXPECT_TRUE(
        create(encoder, api::SpeakerLayout(input), api::SpeakerLayout(carrier), nr_threads));
    EXPECT_TRUE(encoder->set_option("bitline.min", bitline_min));
    EXPECT_TRUE(encoder->set_option("bitline.max", bitline_max));
    EXPECT_TRUE(encoder->set_option("dither.enabled", 0));
    EXPECT_TRUE(encoder->set_option("sample_rate", sample_rate));
    return encoder;
}

inline encode::Frames frames_of(std::uint64_t layout, std::size_t size = 256, unsigned seed = 0) {
    encode::Frames frames;
    EXPECT_TRUE(api::SpeakerLayout(layout).each_channel([&](const api::Channel& channel) {
        frames.set(encode::frame_of(channel, encode::music(size, seed + channel.id())));
        return true;
    }));
    return frames;
}

inline CarrierRecord record_of(const encode::Frames& carriers, const api::Channel& channel) {
    return CarrierRecord(carriers.find(api::ChannelVariant(channel))->samples());
}

}  // namespace vela::codec::v3::encoder
