#include <algorithm>
#include <app/FrameLowpass.hpp>
#include <app/process_audio.hpp>
#include <csignal>
#include <cstdint>
#include <iostream>
#include <utility>
#include <vela/Any.hpp>
#include <vela/AudioSource.hpp>
#include <vela/limiter/hard_limit.hpp>
#include <vela/numeric/wrap.hpp>

namespace app {

namespace {

using vela::api::SampleSpan;
using vela::audio::Frames;
using Source = vela::AudioSource<int, vela::api::ChannelVariant>;

constexpr unsigned sample_bits = 24;

/// A line whenever the share of blocks that are done has changed.
class Progress {
public:
    Progress(const std::optional<std::int32_t>& max, std::int32_t total)
        : max_(max), total_(total) {}

    /// Up to that block, all that have not been shown.
    void show_to(std::int32_t frame_index) {
        while (next_ <= frame_index)
            show_(next_++);
    }

private:
    void show_(std::int32_t frame_index) {
        if (!max_) return;
        // Nothing to do is no share of anything: the process dies of it, as the division would.
        if (total_ == 0) std::raise(SIGFPE);
        const std::int32_t done = vela::numeric::wrap_mul(*max_, frame_index) / total_;
        if (done == last_) return;
        last_ = done;
        std::cout << "Progress: " << done << '/' << *max_ << std::endl;
    }

    std::optional<std::int32_t> max_;
    std::int32_t total_;
    std::int32_t next_ = 0;
    std::int32_t last_ = -1;
};

bool open_source(Source& source, const profile::Interface& profile, const Settings& settings) {
    source.set_frame_size(profile.frame_size());
    for (const Channel& input : settings.channels)
        if (!source.add(input.channel, input.filename)) return false;
    source.set_frame_limit(settings.frame_count);
    return source.prepare();
}

// The option can only confirm the rate of the files, never change it.
bool hand_on_sample_rate(const Source& source, profile::Interface& profile,
                         const Settings& settings) {
    const std::uint32_t rate = source.sample_rate();
    if (settings.sample_rate && *settings.sample_rate != rate) return false;
    if (profile.set_option("sample_rate", vela::Any(rate))) return true;
    std::cout << "ERROR: Could not set the sample rate to \"" << rate << '"' << std::endl;
    return false;
}

// The samples of most files keep to their 24 bits; what a filter answers to them may not.
bool needs_limit(const Source& source, const Settings& settings) {
    return settings.lowpass_type != vela::filter::lowpass::Type::None ||
           source.bit_depth() > sample_bits;
}

bool limit(Frames& frames) {
    return std::ranges::all_of(
        frames, [](auto& entry) { return vela::limiter::hard_limit(entry.second, sample_bits); });
}

const char* const encoding_mark = "Encoding";

bool encode(Frames& frames, const SampleSpan& span, profile::Interface& profile,
            Profiler& profiler) {
    const Profiler::Mark mark(profiler, &encoding_mark);
    return profile.process_one(frames, span);
}

bool flush(profile::Interface& profile, Profiler& profiler) {
    const Profiler::Mark mark(profiler, &encoding_mark);
    return profile.flush();
}

bool lowpass(FrameLowpass& filters, Frames& current, Frames& upcoming, const Frames& input,
             Profiler& profiler) {
    static const char* const mark_msg = "Lowpass";
    const Profiler::Mark mark(profiler, &mark_msg);
    return filters.feed(current, upcoming, input, std::cout);
}

// One block behind the reader, since a block ends with the filters' answers to the next one.
bool run_frames(Source& source, profile::Interface& profile, const Settings& settings,
                std::int32_t total, Profiler& profiler) {
    FrameLowpass filters(settings.lowpass_type, settings.lowpass_freq, source.sample_rate());
    Progress progress(settings.progress, total);
    const bool is_limited = needs_limit(source, settings);
    Frames input;
    Frames current;
    Frames upcoming;
    SampleSpan span;
    SampleSpan next_span;

    // As many blocks behind as are still under way: a run that fails tells how far it came.
    const auto show_progress = [&](std::int32_t frame_index) {
        progress.show_to(frame_index - static_cast<std::int32_t>(profile.nr_under_way()));
    };

    std::int32_t frame_index = 0;
    for (bool finished = false; !finished; ++frame_index) {
        show_progress(frame_index);
        if (source.get(input, next_span)) {
            source.pop_front();
            if (!lowpass(filters, current, upcoming, input, profiler)) return false;
        } else {
            if (!filters.flush(current)) return false;
            finished = true;
        }
        if (frame_index != 0) {
            if (is_limited && !limit(current)) return false;
            const bool is_encoded = encode(current, span, profile, profiler);
            show_progress(frame_index);
            if (!is_encoded) return false;
        }
        std::swap(current, upcoming);
        span = next_span;
    }
    const bool is_flushed = flush(profile, profiler);
    show_progress(frame_index - 1);
    return is_flushed;
}

}  // namespace

int process_audio(const std::shared_ptr<profile::Interface>& profile, const Settings& settings,
                  Profiler& profiler) {
    Source source;
    if (!open_source(source, *profile, settings)) return 1;
    if (!hand_on_sample_rate(source, *profile, settings)) return 1;
    const std::int32_t total =
        settings.frame_count >= 0 ? settings.frame_count : source.nr_frames();
    if (!profile->set_option("frame_count", vela::Any(total))) return 1;
    return run_frames(source, *profile, settings, total, profiler) ? 0 : 1;
}

}  // namespace app
