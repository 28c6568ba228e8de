#include <algorithm>
#include <optional>
#include <vela/AudioSource.hpp>

namespace vela {

template <typename T, typename K>
bool AudioSource<T, K>::add(const K& key, const file::Name& filename) {
    const auto [at, is_new] = inputs_.try_emplace(key);
    if (is_new) at->second.filename = filename;
    return at->second.filename == filename;
}

template <typename T, typename K>
bool AudioSource<T, K>::prepare() {
    std::optional<std::uint32_t> bits;
    for (auto& [key, info] : inputs_) {
        if (!open_(info)) return false;
        const auto& format = *info.parser.format;
        if (bits.value_or(format.bits_per_sample) != format.bits_per_sample) return false;
        bits = format.bits_per_sample;
        const auto count = static_cast<std::int32_t>(info.blocks.size());
        nr_frames_ = nr_frames_ < 0 ? count : std::min(nr_frames_, count);
    }
    span_ = {0, static_cast<std::int64_t>(frame_size_)};
    frames_left_ = std::max(nr_frames_, 0);
    if (frame_limit_ >= 0) frames_left_ = std::min(frames_left_, frame_limit_);
    bit_depth_ = bits.value_or(0);
    return true;
}

template <typename T, typename K>
bool AudioSource<T, K>::open_(Info& info) {
    info.parser.block_size = frame_size_;
    info.parser.offset = offset_;
    if (!info.parser.parse(info.filename)) return false;
    info.blocks = info.parser.blocks;
    info.is_mono = info.blocks.begin().is_mono();
    const std::uint32_t rate = info.parser.format->sample_rate;
    if (sample_rate_ == 0) sample_rate_ = rate;
    return sample_rate_ == rate;
}

template <typename T, typename K>
bool AudioSource<T, K>::get(Frames& frames, api::SampleSpan& span) {
    if (frames_left_ == 0) return false;
    for (auto& [key, info] : inputs_) {
        if (!info.is_mono) return false;
        Frame& block = free_block_(info);
        block.key = key;
        if (!info.blocks.begin().read_mono(block.overwrite())) return false;
        frames.set(block);
    }
    span = span_;
    return true;
}

template <typename T, typename K>
typename AudioSource<T, K>::Frame& AudioSource<T, K>::free_block_(Info& info) const {
    const auto free = std::ranges::find_if_not(info.kept, &Frame::is_shared);
    if (free != info.kept.end()) return *free;
    Frame& block = info.kept.emplace_back(frame_size_);
    block.bit_depth = bit_depth_;
    return block;
}

template <typename T, typename K>
void AudioSource<T, K>::pop_front() {
    for (auto& [key, info] : inputs_)
        if (info.blocks.valid()) ++info.blocks.begin();
    span_ = {span_.stop, span_.stop + static_cast<std::int64_t>(frame_size_)};
    if (frames_left_ > 0) --frames_left_;
}

template class AudioSource<int, api::ChannelVariant>;

}  // namespace vela
