#include <algorithm>
#include <optional>
#include <utility>
#include <vector>
#include <vela/AudioSource.hpp>
#include <vela/thread/awake.hpp>

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
        if (!take_(frames.goc(key, frame_size_, bit_depth_), info)) return false;
    }
    span = span_;
    return true;
}

// A block that could not be read ahead is tried once more, and tells then.
template <typename T, typename K>
bool AudioSource<T, K>::take_(Frame& frame, Info& info) const {
    if (const auto lock = lock_if_due_(info))
        return info.blocks.begin().read_mono(frame.overwrite());
    frame = ahead_(info, position_);
    return true;
}

template <typename T, typename K>
std::unique_lock<std::mutex> AudioSource<T, K>::lock_if_due_(Info& info) const {
    const auto is_due = [&] { return info.nr_read == position_; };
    if (!is_due()) return {};
    auto lock = thread::lock_awake(info.mutex);
    if (!is_due()) lock.unlock();
    return lock;
}

template <typename T, typename K>
void AudioSource<T, K>::pop_front() {
    for (auto& [key, info] : inputs_)
        skip_(info);
    ++position_;
    span_ = {span_.stop, span_.stop + static_cast<std::int64_t>(frame_size_)};
    if (frames_left_ > 0) --frames_left_;
}

template <typename T, typename K>
void AudioSource<T, K>::skip_(Info& info) const {
    const auto lock = lock_if_due_(info);
    if (!lock) return;
    if (info.blocks.valid()) ++info.blocks.begin();
    ++info.nr_read;
}

// Nothing beyond the end of the stream, wherever it is.  If an errand ends while the counts are
// asked, there is one too many, which finds nothing to do, or one too few, and `get` reads.
template <typename T, typename K>
void AudioSource<T, K>::read_ahead(thread::Errands& errands) {
    if (!errands_) errands_.reset(&errands);
    ahead_end_ = position_ + std::min(nr_ahead_(), static_cast<std::uint64_t>(frames_left_));
    std::vector<thread::Errands::Errand> reads;
    reads.reserve(inputs_.size());
    for (auto& input : inputs_) {
        Info& info = input.second;
        for (auto n = info.nr_read + info.nr_errands; n < ahead_end_; ++n) {
            ++info.nr_errands;
            reads.emplace_back([this, &input] { read_ahead_(input.first, input.second); });
        }
    }
    errands.post(std::move(reads));
}

template <typename T, typename K>
void AudioSource<T, K>::read_ahead_(const K& key, Info& info) const {
    const auto lock = thread::lock_awake(info.mutex);
    if (info.nr_read < ahead_end_ && read_next_(key, info)) ++info.nr_read;
    --info.nr_errands;
}

template <typename T, typename K>
bool AudioSource<T, K>::read_next_(const K& key, Info& info) const {
    Frame& frame = ahead_(info, info.nr_read);
    if (frame.size() != frame_size_) frame = Frame(key, frame_size_);
    frame.bit_depth = bit_depth_;
    if (!info.blocks.begin().read_mono(frame.overwrite())) return false;
    ++info.blocks.begin();
    return true;
}

template class AudioSource<int, api::ChannelVariant>;

}  // namespace vela
