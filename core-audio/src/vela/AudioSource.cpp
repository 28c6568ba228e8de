#include <algorithm>
#include <optional>
#include <utility>
#include <vector>
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
    frames_left_ = frame_limit_;
    bit_depth_ = bits.value_or(0);
    return true;
}

template <typename T, typename K>
bool AudioSource<T, K>::open_(Info& info) {
    info.parser.block_size = frame_size_;
    info.parser.offset = offset_;
    if (!info.parser.parse(info.filename)) return false;
    info.blocks = info.parser.blocks;
    const std::uint32_t rate = info.parser.format->sample_rate;
    if (sample_rate_ == 0) sample_rate_ = rate;
    return sample_rate_ == rate;
}

template <typename T, typename K>
bool AudioSource<T, K>::get(Frames& frames, api::SampleSpan& span) {
    errands_.reset();
    if (inputs_.empty() || frames_left_ == 0) return false;
    for (auto& [key, info] : inputs_) {
        if (!has_block_(info)) return false;
        if (!take_(frames.goc(key, frame_size_, bit_depth_), info)) return false;
    }
    span = span_;
    return true;
}

// A block that could not be read ahead is tried once more, and tells then.  For one that was, the
// frame's memory comes back.
template <typename T, typename K>
bool AudioSource<T, K>::take_(Frame& frame, Info& info) {
    if (!info.is_ahead) return read_(frame, info);
    std::swap(frame, info.ahead.front());
    std::rotate(info.ahead.begin(), info.ahead.begin() + 1, info.ahead.end());
    info.is_ahead = false;
    return true;
}

template <typename T, typename K>
bool AudioSource<T, K>::read_(Frame& frame, Info& info) {
    return info.blocks.begin().read_mono(frame.overwrite());
}

template <typename T, typename K>
bool AudioSource<T, K>::has_block_(const Info& info) {
    const auto& blocks = info.blocks;
    return blocks.valid() && blocks.end() - blocks.begin() > 0 && blocks.begin().is_mono();
}

template <typename T, typename K>
void AudioSource<T, K>::pop_front() {
    errands_.reset();
    for (auto& [key, info] : inputs_) {
        if (info.blocks.valid()) ++info.blocks.begin();
        info.is_ahead = false;
    }
    span_ = {span_.stop, span_.stop + static_cast<std::int64_t>(frame_size_)};
    if (frames_left_ > 0) --frames_left_;
}

// Nothing beyond the end of the stream, wherever it is.
template <typename T, typename K>
void AudioSource<T, K>::read_ahead(thread::Errands& errands) {
    const auto has_block = [](const auto& input) { return has_block_(input.second); };
    if (frames_left_ == 0 || !std::ranges::all_of(inputs_, has_block)) return;
    errands_.reset(&errands);
    std::vector<thread::Errands::Errand> reads;
    reads.reserve(inputs_.size());
    for (auto& [key, info] : inputs_)
        reads.emplace_back([this, &key = key, &info = info] { read_ahead_(key, info); });
    errands.post(std::move(reads));
}

template <typename T, typename K>
void AudioSource<T, K>::read_ahead_(const K& key, Info& info) const {
    Frame& ahead = info.ahead.front();
    if (ahead.size() != frame_size_) ahead = Frame(key, frame_size_);
    ahead.bit_depth = bit_depth_;
    info.is_ahead = read_(ahead, info);
}

template class AudioSource<int, api::ChannelVariant>;

}  // namespace vela
