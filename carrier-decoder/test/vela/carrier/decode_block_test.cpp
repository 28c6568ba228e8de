#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/scale.hpp>

#include "support/Sample.hpp"

namespace vela::carrier {
namespace {

using support::make_sample;
using support::Sample;

std::string reason_of(const std::vector<int>& samples) {
    Block block;
    std::string why;
    EXPECT_FALSE(decode_block(block, why, samples));
    return why;
}

Block decoded(const std::vector<int>& samples) {
    Block block;
    std::string why;
    EXPECT_TRUE(decode_block(block, why, samples)) << why;
    return block;
}

struct Shape {
    std::size_t nr_channels;
    std::size_t length;
    unsigned nr_bitlines;
};

class DecodeBlock : public testing::TestWithParam<Shape> {};

TEST_P(DecodeBlock, FindsTheBitLinesAndRebuildsTheChannels) {
    const auto [nr_channels, length, nr_bitlines] = GetParam();
    const Sample sample = make_sample(nr_channels, length, nr_bitlines);
    const Block block = decoded(sample.samples());

    EXPECT_EQ(block.nr_bitlines, nr_bitlines);
    EXPECT_EQ(block.header.channels.size(), nr_channels);
    EXPECT_EQ(block.seeds, sample.record.seeds);
    EXPECT_EQ(block.centers, sample.record.centers);
    EXPECT_EQ(block.ixs, sample.record.ixs);
    EXPECT_EQ(block.mix, sample.mixed.mix);
    EXPECT_EQ(block.instructions, (std::vector<Instruction>{{opcode::input_layout, {70}}}));
    const std::size_t capacity = support::places(length, nr_bitlines).size();
    EXPECT_EQ(block.nr_spare_bits, capacity - sample.record.bits().size());
    for (std::size_t i = 0; i < nr_channels; ++i) {
        std::vector<int> expected = sample.mixed.rebuilt[i];
        for (int& x : expected)
            x *= 1 << nr_bitlines;
        EXPECT_EQ(block.channels.at(static_cast<ChannelId>(2 + i)), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, DecodeBlock,
                         testing::Values(Shape{1, 16, 14}, Shape{1, 80, 3}, Shape{1, 4096, 3},
                                         Shape{2, 64, 14}, Shape{2, 256, 6}, Shape{2, 992, 5},
                                         Shape{2, 1000, 5}, Shape{2, 1024, 12}, Shape{3, 96, 9},
                                         Shape{3, 256, 6}, Shape{3, 1000, 5}, Shape{3, 4096, 8}),
                         [](const auto& param) {
                             const Shape& shape = param.param;
                             return "Channels" + std::to_string(shape.nr_channels) + "Samples" +
                                    std::to_string(shape.length) + "Lines" +
                                    std::to_string(shape.nr_bitlines);
                         });

TEST(DecodeBlock, KnowsThePlacesOfEverySizeClass) {
    struct Class {
        std::uint32_t nr_centers, ix, nr_slots;
    };
    for (const auto& [nr_centers, ix, nr_slots] :
         {Class{8, 0, 8}, Class{9, 1, 10}, Class{16, 4, 16}, Class{17, 5, 20}, Class{60, 15, 60},
          Class{61, 16, 64}, Class{65, 17, 72}, Class{600, 83, 600}, Class{601, 84, 632},
          Class{632, 84, 632}, Class{633, 85, 648}, Class{649, 86, 664}}) {
        SCOPED_TRACE(nr_centers);
        Sample sample = make_sample(2, 1024, 14);
        sample.record.error_center_ix = ix;
        sample.record.nr_slots = nr_slots;
        sample.record.rice_k = 7;
        sample.record.centers.assign(nr_centers, {-9, 0});
        sample.record.ixs.assign(1024, 0);
        sample.record.ixs[5] = nr_centers - 1;
        const Block block = decoded(sample.samples());
        EXPECT_EQ(block.nr_center_slots, nr_slots);
        EXPECT_EQ(block.centers, sample.record.centers);
        EXPECT_EQ(block.ixs, sample.record.ixs);
    }
}

TEST(DecodeBlock, TakesBackTheAttenuationOfTheGroupButNotThatOfAChannel) {
    Sample sample = make_sample(2, 256, 6);
    auto& list = sample.record.instructions;
    list.clear();
    for (const unsigned byte : {1, 64, 3, 60, 65, 7, 0})
        support::append(list, byte, 8);
    const Block block = decoded(sample.samples());
    EXPECT_EQ(block.group_scaler_ix(), 7u);
    EXPECT_EQ(block.attenuation_ix(api::channel::id::LFE), 60u);
    EXPECT_EQ(block.attenuation_ix(api::channel::id::Center), 0u);

    std::vector<int> expected = sample.mixed.rebuilt[1];
    restore_level(expected, 6, 7);
    EXPECT_EQ(block.channels.at(api::channel::id::LFE), expected);
    undo_attenuation(expected, 60);
    EXPECT_EQ(block.unattenuated().at(api::channel::id::LFE), expected);
    EXPECT_EQ(block.unattenuated().at(api::channel::id::Center),
              block.channels.at(api::channel::id::Center));
}

TEST(DecodeBlock, RefusesEverySingleFlippedBit) {
    for (std::size_t nr_channels = 1; nr_channels <= 3; ++nr_channels) {
        std::vector<int> samples = make_sample(nr_channels, 256, 6).samples();
        for (std::size_t t = 0; t < samples.size(); ++t) {
            for (int line = 0; line < 24; ++line) {
                const int before = samples[t];
                const int flip = line == 23 ? -0x800000 : 1 << line;
                samples[t] ^= flip;
                Block block;
                std::string why;
                ASSERT_FALSE(decode_block(block, why, samples)) << t << ", line " << line;
                ASSERT_FALSE(why.empty());
                samples[t] = before;
            }
        }
    }
}

/// With a checksum that agrees again: what the other checks are there for.
TEST(DecodeBlock, GivesEveryBitOfTheRecordAMeaningOrRefusesItsFlip) {
    for (std::size_t nr_channels = 1; nr_channels <= 3; ++nr_channels) {
        const Sample sample = make_sample(nr_channels, 256, 6);
        const std::vector<int> sound_samples = sample.samples();
        const Block sound = decoded(sound_samples);
        const auto places = support::places(256, 6);
        for (std::size_t bit = 0; bit < places.size(); ++bit) {
            if (bit >= 16 && bit < 32) continue;  // the checksum itself
            std::vector<int> samples = sound_samples;
            samples[places[bit][0]] ^= 1 << places[bit][1];
            support::seal(samples);
            Block block;
            std::string why;
            if (decode_block(block, why, samples)) {
                ASSERT_NE(block, sound) << "record bit " << bit;
            }
        }
    }
}

TEST(DecodeBlock, RefusesWhatStandsForNothingButIsSet) {
    const Sample sample = make_sample(3, 256, 6);
    const auto places = support::places(256, 6);
    const auto reason_of_flip = [&](std::size_t bit) {
        std::vector<int> samples = sample.samples();
        samples[places[bit][0]] ^= 1 << places[bit][1];
        support::seal(samples);
        return reason_of(samples);
    };
    for (std::size_t bit = 0; bit < 16; ++bit) {
        EXPECT_EQ(reason_of_flip(bit), "there is no sync word");
    }
    for (std::size_t bit = 128; bit < 160; ++bit) {
        EXPECT_EQ(reason_of_flip(bit), "the reserved end of the header is not zero");
    }
    // header, five seeds, four bytes of instructions, five centers; then three unused places
    const std::size_t unused = 160 + 160 + 32 + 5 * 5;
    for (std::size_t bit = unused; bit < unused + 3 * 5; ++bit) {
        EXPECT_EQ(reason_of_flip(bit), "a place for a center behind the 5 used ones is filled");
        EXPECT_EQ(reason_of_flip(bit + 8 * 5),
                  "a place for a center behind the 5 used ones is filled");
    }
    for (std::size_t bit = sample.record.bits().size(); bit < places.size(); ++bit) {
        EXPECT_TRUE(reason_of_flip(bit).starts_with("the padding is not zero")) << bit;
    }
    for (std::size_t t = 16; t < 256; t += 16) {
        std::vector<int> samples = sample.samples();
        samples[t] ^= 1;
        support::seal(samples);
        EXPECT_EQ(reason_of(samples), "line 0 of sample " + std::to_string(t) + " is not empty");
    }
}

struct Spoiled {
    const char* name;
    std::function<void(Sample&)> spoil;
    const char* why;
};

class SpoiledBlock : public testing::TestWithParam<Spoiled> {};

TEST_P(SpoiledBlock, IsRefusedWithItsReason) {
    Sample sample = make_sample(2, 256, 6);
    GetParam().spoil(sample);
    EXPECT_EQ(reason_of(sample.samples()), GetParam().why);
}

INSTANTIATE_TEST_SUITE_P(
    All, SpoiledBlock,
    testing::Values(Spoiled{"FrameSizeCode", [](Sample& s) { s.record.frame_size_code = 16; },
                            "the frame size code 16 does not go with 256 samples"},
                    Spoiled{"ReservedFlag", [](Sample& s) { s.record.reserved_flags = 1; },
                            "a reserved flag of the header is set"},
                    Spoiled{"NotEncoded", [](Sample& s) { s.record.encoded = 0; },
                            "the header says that the block is not encoded"},
                    Spoiled{"MixWidth", [](Sample& s) { s.record.mix_bw_code = 12; },
                            "a mix of 22 bits leaves too few bit-lines"},
                    Spoiled{"Version", [](Sample& s) { s.record.version_minor = 9; },
                            "the record has version 1.9, not 1.10"},
                    Spoiled{"IndexCoding", [](Sample& s) { s.record.ix_coding = 1; },
                            "the way of coding the indices is unknown"},
                    Spoiled{"RiceZero", [](Sample& s) { s.record.rice_k = 0; },
                            "the Rice parameter 0 lies outside 1 to 7"},
                    Spoiled{"RiceEight", [](Sample& s) { s.record.rice_k = 8; },
                            "the Rice parameter 8 lies outside 1 to 7"},
                    Spoiled{"CenterOfOneBit", [](Sample& s) { s.record.center_bits = 1; },
                            "centers of 1 bits cannot be"},
                    Spoiled{"CenterOf33Bits", [](Sample& s) { s.record.center_bits = 33; },
                            "centers of 33 bits cannot be"},
                    Spoiled{"TwoLists", [](Sample& s) { s.record.nr_instruction_lists = 2; },
                            "there are 2 instruction lists"},
                    Spoiled{"NoChannel",
                            [](Sample& s) {
                                s.record.channels = {255, 255, 255, 255};
                            },
                            "no channel is named"},
                    Spoiled{"FourChannels",
                            [](Sample& s) {
                                s.record.channels = {1, 2, 3, 4};
                            },
                            "four channels are named"},
                    Spoiled{"ChannelTwice", [](Sample& s) { s.record.channels[1] = 2; },
                            "channel 2 is mixed twice"},
                    Spoiled{"ChannelBehindGap",
                            [](Sample& s) {
                                s.record.channels = {2, 255, 3, 255};
                            },
                            "channel 3 stands behind an empty slot"},
                    Spoiled{"UnknownChannel", [](Sample& s) { s.record.channels[0] = 25; },
                            "there is no channel 25"},
                    Spoiled{"SingleWithIndices",
                            [](Sample& s) {
                                s.record.channels = {2, 255, 255, 255};
                            },
                            "a single channel has neither indices nor centers to describe"},
                    Spoiled{"WideCenters", [](Sample& s) { s.record.center_bits = 6; },
                            "centers of 5 bits are written in 6"},
                    Spoiled{"LargeClass",
                            [](Sample& s) {
                                s.record.error_center_ix = 1;
                                s.record.nr_slots = 10;
                            },
                            "size class 1 is too large for 5 centers"},
                    Spoiled{"IndexBeyond", [](Sample& s) { s.record.ixs[3] = 8; },
                            "the index 8 of sample 3 is beyond the 8 places for centers"},
                    Spoiled{"UnknownOpcode", [](Sample& s) { s.record.instructions[15].flip(); },
                            "opcode 31 is unknown"}),
    [](const auto& param) { return param.param.name; });

TEST(DecodeBlock, RefusesACenterOfMinusZero) {
    const Sample sample = make_sample(2, 256, 6);
    std::vector<int> samples = sample.samples();
    const auto sign = support::places(256, 6)[160 + 64 + 32];
    samples[sign[0]] |= 1 << sign[1];
    support::seal(samples);
    EXPECT_EQ(reason_of(samples), "a center of zero has a sign");
}

TEST(DecodeBlock, RefusesAWrongChecksum) {
    std::vector<int> samples = make_sample(2, 256, 6).samples();
    samples[7] ^= 2;
    EXPECT_TRUE(reason_of(samples).starts_with("the checksum reads "));
}

TEST(DecodeBlock, RefusesSamplesOfMoreThan24Bits) {
    std::vector<int> samples = make_sample(2, 256, 6).samples();
    samples[9] = 0x800000;
    EXPECT_EQ(reason_of(samples), "sample 9 has more than 24 bits");
}

TEST(DecodeBlock, RefusesEveryCutLength) {
    std::vector<int> samples = make_sample(3, 256, 6).samples();
    while (!samples.empty()) {
        samples.pop_back();
        const std::string why = reason_of(samples);
        if (samples.size() % 16 == 0 && !samples.empty()) continue;
        EXPECT_EQ(why, std::to_string(samples.size()) + " samples are no size of a block");
    }
}

TEST(DecodeBlock, RefusesARecordThatIsTooLongForItsBlock) {
    std::set<std::string> reasons;
    for (std::size_t length = 16; length <= 256; length += 16) {
        reasons.insert(reason_of(make_sample(3, length, 3).samples()));
    }
    EXPECT_EQ(reasons.count("the record ends within its header"), 1u);
    EXPECT_EQ(reasons.count("the record ends within the seeds"), 1u);
    EXPECT_EQ(reasons.count("the instruction list does not end within the record"), 1u);
    EXPECT_EQ(reasons.count("the record ends within the centers"), 1u);
    EXPECT_GT(reasons.size(), 4u);  // within the index of this sample or that
}

}  // namespace
}  // namespace vela::carrier
