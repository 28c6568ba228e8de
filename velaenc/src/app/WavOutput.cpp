#include <app/WavOutput.hpp>
#include <array>
#include <vector>
#include <vela/Range.hpp>

namespace app {

namespace {

using vela::Range;
using vela::api::AudioBlock;
using vela::api::Channel;

constexpr std::uint16_t bytes_per_sample = 3;

// The only way from a channel to its position in WAVE.
bool translate(std::uint32_t& out, const Channel& channel) {
    using namespace vela::api::channel::id;
    struct Position {
        Value id;
        std::uint32_t mask_bit;
    };
    constexpr std::array<Position, 12> positions{{{Left, 1},
                                                  {Right, 2},
                                                  {Center, 4},
                                                  {LFE, 8},
                                                  {LeftBack, 16},
                                                  {RightBack, 32},
                                                  {LeftSurround, 512},
                                                  {RightSurround, 1024},
                                                  {HeightLeft, 4096},
                                                  {HeightRight, 16384},
                                                  {HeightLeftSurround, 32768},
                                                  {HeightRightSurround, 131072}}};
    for (const Position& position : positions) {
        if (position.id != channel.id()) continue;
        out = position.mask_bit;
        return true;
    }
    return false;
}

bool samples_of(Range<const int*>& out, const AudioBlock<const int>& block,
                const Channel& channel) {
    const int* const first = block.channel[channel.id()];
    if (!first) return false;
    out = {first, first + block.frame_size};
    return true;
}

}  // namespace

bool WavOutput::prepare() {
    if (prepare_()) return true;
    channels_.clear();
    multi_writer_.reset();
    return false;
}

bool WavOutput::prepare_() {
    if (!channels_.empty()) return true;
    if (filename.empty() || !sample_rate || layout.mask() == 0) return false;
    return multi_channel ? prepare_interleaved_() : prepare_files_();
}

bool WavOutput::prepare_files_() {
    return layout.each_channel([this](const Channel& channel) {
        if (!channel.short_name()) return false;
        auto name = filename;
        name << channel.short_name() << ".wav";
        WavChannel position = 0;
        if (!translate(position, channel)) return false;
        channels_[position] = {channel, std::make_shared<vela::wav::FileWriter>(name, format_(1))};
        return true;
    });
}

bool WavOutput::prepare_interleaved_() {
    auto format = format_(layout.count());
    const bool known = layout.each_channel([&](const Channel& channel) {
        WavChannel position = 0;
        if (!translate(position, channel)) return false;
        channels_[position] = {channel, nullptr};
        format.channel_mask |= position;
        return true;
    });
    if (!known) return false;
    auto name = filename;
    name << ".wav";
    multi_writer_ = std::make_shared<vela::wav::FileWriter>(name, format);
    return true;
}

vela::wav::Format WavOutput::format_(std::uint32_t nr_channels) const {
    vela::wav::Format format;
    format.format_tag = 1;
    format.channels = static_cast<std::uint16_t>(nr_channels);
    format.sample_rate = *sample_rate;
    format.byte_rate = bytes_per_sample * nr_channels * *sample_rate;
    format.block_align = static_cast<std::uint16_t>(bytes_per_sample * nr_channels);
    format.bits_per_sample = 8 * bytes_per_sample;
    return format;
}

bool WavOutput::append(const vela::audio::Frames& frames) {
    AudioBlock<const int> block;
    return vela::api::convert(block, frames) && append(block);
}

bool WavOutput::append(const AudioBlock<const int>& block) {
    if (channels_.empty()) return false;
    return multi_channel ? append_interleaved_(block) : append_files_(block);
}

bool WavOutput::append_files_(const AudioBlock<const int>& block) {
    for (const auto& [position, output] : channels_) {
        Range<const int*> samples;
        if (!samples_of(samples, block, output.channel)) return false;
        if (!output.writer->add_frame(samples)) return false;
    }
    return true;
}

bool WavOutput::append_interleaved_(const AudioBlock<const int>& block) {
    if (!multi_writer_) return false;
    std::vector<Range<const int*>> ranges;
    for (const auto& [position, output] : channels_)
        if (!samples_of(ranges.emplace_back(), block, output.channel)) return false;
    return multi_writer_->add_block(ranges);
}

}  // namespace app
