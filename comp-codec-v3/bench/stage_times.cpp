// stage-times LAYOUT FRAME_SIZE CHANNEL=FILE...: where the time of an encode goes.
//
// Runs the search over real audio, block by block on one thread, with a clock between the stages of
// every candidate; the encoder itself holds no clock.

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <vela/AudioSource.hpp>
#include <vela/CarrierRecipe.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/Muxer.hpp>
#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>

namespace {

using namespace vela;
using codec::v3::encode::Group;
using codec::v3::encoder::CandidateQueue;
using Code = codec::v3::encode::Chain::Code;
using Clock = std::chrono::steady_clock;

enum Stage { silence, rescale, deltas, cluster, mixing, quality, mux, nr_stages };
constexpr std::array<const char*, nr_stages> names{"DetectSilence", "Rescaler", "ComputeDeltas",
                                                   "ClusterDeltas", "Mixer",    "ComputeQuality",
                                                   "Muxer"};

/// The search of the encoder with a clock in it.
class TimedSearch {
public:
    explicit TimedSearch(const CarrierRecipe& recipe) : recipe_(recipe) {}

    bool encode(const audio::Frames& frames, const api::SampleSpan& span) {
        CandidateQueue queue;
        for (const auto& group : recipe_.groups)
            if (!push_(queue, frames, span, group)) return false;
        best_.clear();
        while (const auto candidate = queue.pop())
            if (!chain_.drops(candidate->draft(), candidate->nr_bitlines()) && !try_(*candidate))
                return false;
        for (auto& [key, winner] : best_) {
            prev_bitlines_[key] = winner->nr_bitlines;
            if (!timed_(mux, [&] { return muxer_(*winner); })) return false;
        }
        return true;
    }

    [[nodiscard]] double seconds(Stage stage) const { return seconds_[stage]; }

private:
    using GroupPtr = std::shared_ptr<Group>;

    bool push_(CandidateQueue& queue, const audio::Frames& frames, const api::SampleSpan& span,
               const CarrierRecipe::Group& from) {
        const auto draft = Group::create(api::SpeakerLayout(recipe_.input),
                                         api::SpeakerLayout(recipe_.carrier), span);
        draft->frame.key = api::ChannelVariant(api::Channel::create(from.carrier));
        draft->centers_max = 150;
        if (const auto prev = prev_bitlines_.find(draft->frame.key); prev != prev_bitlines_.end())
            draft->prev_bitlines = prev->second;
        for (const auto id : from.active_members()) {
            const auto* const frame = frames.find(api::ChannelVariant(api::Channel::create(id)));
            if (!frame) return false;
            draft->origs.push_back(*frame);
            draft->orig_attn[frame->key] = 0;
        }
        chain_.start_frame(draft->frame.key);
        queue.push(draft, 3, 12);
        return true;
    }

    GroupPtr create_(const CandidateQueue::Candidate& candidate) const {
        const std::uint32_t b = candidate.nr_bitlines();
        auto group = std::make_shared<Group>(candidate.draft());
        group->nr_bitlines = b;
        const auto prev = prev_centers_.find({b, group->frame.key});
        group->centers_start_2 = group->centers_start_3 =
            prev == prev_centers_.end() ? 20 * (b - 3) + 15 : prev->second + 20;
        return group;
    }

    bool try_(const CandidateQueue::Candidate& candidate) {
        const GroupPtr group = create_(candidate);
        const Code code = attempt_(*group);
        if (code == Code::failure) return false;
        if (code == Code::filtered || !group->has_score) return true;
        const auto nr_centers = std::max(group->centers_1d.size(), group->centers_2d.size());
        if (nr_centers != 0)
            prev_centers_[{group->nr_bitlines, group->frame.key}] =
                static_cast<std::uint32_t>(nr_centers);
        auto& best = best_[group->frame.key];
        if (!best || best->score > group->score) best = group;
        return true;
    }

    Code attempt_(Group& group) {
        if (!timed_(silence, [&] { return chain_.detect_silence(group); })) return Code::failure;
        for (group.overflow = true; group.overflow; ++group.scaler_ix) {
            if (!timed_(rescale, [&] { return chain_.rescaler(group); }) ||
                !timed_(deltas, [&] { return chain_.compute_deltas(group); }))
                return Code::failure;
            const Code code = timed_(cluster, [&] { return chain_.cluster_deltas(group); });
            if (code != Code::ok) return code;
            if (!timed_(mixing, [&] { return chain_.mixer(group); }) ||
                !timed_(quality, [&] { return chain_.compute_quality(group); }))
                return Code::failure;
            if (!group.overflow) break;
        }
        return Code::ok;
    }

    template <typename F>
    std::invoke_result_t<F> timed_(Stage stage, F f) {
        const auto start = Clock::now();
        const auto result = f();
        seconds_[stage] += std::chrono::duration<double>(Clock::now() - start).count();
        return result;
    }

    const CarrierRecipe& recipe_;
    codec::v3::encode::Chain chain_;
    codec::v3::encode::Muxer muxer_;
    std::map<api::ChannelVariant, GroupPtr> best_;
    std::map<api::ChannelVariant, std::uint32_t> prev_bitlines_;
    std::map<std::pair<std::uint32_t, api::ChannelVariant>, std::uint32_t> prev_centers_;
    std::array<double, nr_stages> seconds_{};
};

using Source = AudioSource<int, api::ChannelVariant>;

bool open(Source& source, int argc, char** argv) {
    source.set_frame_size(static_cast<std::uint64_t>(std::atoi(argv[2])));
    for (int i = 3; i < argc; ++i) {
        const std::string input = argv[i];
        const auto cut = input.find('=');
        api::ChannelVariant key;
        if (cut == std::string::npos || !key.parse(input.substr(0, cut)) ||
            !source.add(key, file::Name(input.substr(cut + 1))))
            return false;
    }
    return source.prepare();
}

int report(const TimedSearch& search, double audio_seconds) {
    double total = 0;
    for (int stage = 0; stage < nr_stages; ++stage)
        total += search.seconds(Stage(stage));
    std::printf("%.1f s of audio in %.2f s: %.1f seconds of audio per second\n", audio_seconds,
                total, audio_seconds / total);
    for (int stage = 0; stage < nr_stages; ++stage)
        std::printf("  %-16s %7.3f s %5.1f %%\n", names[static_cast<std::size_t>(stage)],
                    search.seconds(Stage(stage)), 100 * search.seconds(Stage(stage)) / total);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    SpeakerLayout layout;
    const CarrierRecipe* recipe = nullptr;
    Source source;
    if (argc < 4 || !translate(layout, argv[1]) || !(recipe = find_recipe(layout)) ||
        !open(source, argc, argv)) {
        std::fprintf(stderr, "usage: stage-times LAYOUT FRAME_SIZE CHANNEL=FILE...\n");
        return 1;
    }
    TimedSearch search(*recipe);
    audio::Frames frames;
    api::SampleSpan span;
    for (; source.get(frames, span); source.pop_front())
        if (!search.encode(frames, span)) return 1;
    return report(search, static_cast<double>(span.stop) / source.sample_rate());
}
