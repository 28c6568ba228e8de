// The search of the encoder: from the frames of one block to the best candidate per carrier.

#include <algorithm>
#include <atomic>
#include <vela/OnRAII.hpp>
#include <vela/codec/v3/lib/encoder/Encoder.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encoder {

namespace {

// How many centers to try first, before there is a frame to learn from.
std::uint32_t centers_start(std::uint32_t nr_bitlines) {
    constexpr std::array<std::uint32_t, 12> from_three{15,  20,  40,  60,  80,  100,
                                                       120, 140, 160, 180, 200, 220};
    const std::uint32_t ix = nr_bitlines - 3;
    return ix < from_three.size() ? from_three[ix] : 80;
}

// Centers tried beyond what the frame before used.
constexpr std::uint32_t centers_margin = 20;

// The one carrier that tells the metadata; the others keep their bit-lines for the signal.
std::optional<std::uint32_t> metadata_channel(const api::SpeakerLayout& carriers) {
    using namespace api::channel::id;
    for (const auto id : {LFE, RightBack, Center, RightSurround, Right})
        if (carriers.test(id)) return id;
    return std::nullopt;
}

}  // namespace

bool Encoder::process_groups_() {
    Search search;
    forget_winners_();
    chain_.start_frame();
    if (!queue_candidates_(search.queue)) return false;

    {
        // On every way out: what the other threads work on ends here.
        const OnRAII stop([this] { pool_.stop(); });
        if (!start_threads_(search)) return false;
        // The calling thread works, too: it would only wait otherwise.
        work_(search);
    }
    return search.nr_failures == 0 && finish_frame_();
}

void Encoder::forget_winners_() {
    decltype(best_) winners;
    {
        const auto lock = thread::lock_awake(best_mutex_);
        winners.swap(best_);
    }
    for (auto& [carrier, winner] : winners)
        spare_groups_.give_back(std::move(winner.group));
}

bool Encoder::start_threads_(Search& search) {
    const auto help = [this, &search] {
        work_(search);
        return false;
    };
    return nr_at_once_ <= 1 || pool_.start(help, nr_at_once_ - 1);
}

bool Encoder::queue_candidates_(CandidateQueue& queue) {
    const auto frames = downmixed_.start_draining();
    return frames && add_groups_(queue, *frames);
}

bool Encoder::add_groups_(CandidateQueue& queue, const Frames& frames) const {
    const CarrierRecipe* const recipe = find_recipe(input_layout_);
    if (!recipe || recipe->carrier != output_layout_.mask()) return false;
    return std::ranges::all_of(recipe->groups, [&](const CarrierRecipe::Group& group) {
        return add_(queue, frames, group);
    });
}

bool Encoder::add_(CandidateQueue& queue, const Frames& frames,
                   const CarrierRecipe::Group& recipe) const {
    const GroupPtr draft = create_draft_();
    for (const auto id : recipe.active_members())
        if (!set_origs_(*draft, api::ChannelVariant(api::Channel::create(id)), frames))
            return false;
    set_carrier_(*draft, api::Channel::create(recipe.carrier));
    for (std::uint32_t b = bitline_min_; b <= bitline_max_; ++b)
        queue.push(draft, b);
    return true;
}

Encoder::GroupPtr Encoder::create_draft_() const {
    auto group = encode::Group::create(input_layout_, output_layout_, span_);
    group->centers_max = centers_max_;
    group->centers_min = 1;
    group->dither = dither_;
    return group;
}

bool Encoder::set_origs_(encode::Group& group, const api::ChannelVariant& key,
                         const Frames& frames) const {
    const auto* const frame = frames.find(key);
    const auto attn_ix = attn_ix_.find(key);
    if (!frame || attn_ix == attn_ix_.end()) return false;
    group.origs.push_back(*frame);
    group.orig_attn[key] = attn_ix->second;
    return true;
}

void Encoder::set_carrier_(encode::Group& group, const api::Channel& carrier) const {
    const api::ChannelVariant key(carrier);
    group.frame.key = key;
    if (const auto prev = prev_bitlines_.find(key); prev != prev_bitlines_.end())
        group.prev_bitlines = prev->second;
    if (metadata_channel(output_layout_) == carrier.id()) set_metadata_(group);
}

void Encoder::set_metadata_(encode::Group& group) const {
    group.meta = meta_.due(span_);
    group.loudness = loudness_;
    if (const auto preset = preset_.due(span_)) group.preset = static_cast<std::uint8_t>(*preset);
    if (const auto room_type = room_type_.due(span_))
        group.room_type = static_cast<std::uint32_t>(*room_type);
    group.version = version_.due(span_);
    group.git_hash = git_hash_.due(span_);
}

// In one call all that this thread may have: what waits for its last candidate is for it alone.
void Encoder::work_(Search& search) {
    using First = CandidateQueue::First;
    const First first = nr_at_once_ > 1 ? First::mix : First::turn;
    while (const auto candidate = search.queue.pop(first))
        try_(*candidate, search.nr_failures);
    mux_finished_(search.queue);
}

// One that fails does not keep others from being tried.
void Encoder::try_(const CandidateQueue::Candidate& candidate, std::atomic<unsigned>& nr_failures) {
    if (chain_.drops(candidate.draft(), candidate.nr_bitlines())) return;

    GroupPtr group = create_group_(candidate.draft(), candidate.nr_bitlines());
    const Code code = chain_(*group);
    candidate_log_.add(*group, code);
    if (code == Code::failure) ++nr_failures;
    if (code == Code::ok) select_best_(group);
    spare_groups_.give_back(std::move(group));
}

Encoder::GroupPtr Encoder::create_group_(const encode::Group& draft, std::uint32_t nr_bitlines) {
    auto group = spare_groups_.copy(draft);
    group->nr_bitlines = nr_bitlines;
    group->centers_start_2 = group->centers_start_3 = centers_start(nr_bitlines);

    const auto lock = thread::lock_awake(prev_centers_mutex_);
    const auto prev = prev_centers_.find({nr_bitlines, group->frame.key});
    if (prev == prev_centers_.end()) return group;
    const auto [with_2, with_3] = prev->second;
    if (with_2 != 0) group->centers_start_2 = with_2 + centers_margin;
    if (with_3 != 0) group->centers_start_3 = with_3 + centers_margin;
    return group;
}

// Leaves the one that is needed no more, if any.
void Encoder::select_best_(GroupPtr& group) {
    if (!group->has_score) return;
    const auto key = group->frame.key;
    {
        const auto lock = thread::lock_awake(prev_centers_mutex_);
        auto& [with_2, with_3] = prev_centers_[{group->nr_bitlines, key}];
        if (group->active.size() == 2)
            with_2 = static_cast<std::uint32_t>(group->centers_1d.size());
        if (group->active.size() == 3)
            with_3 = static_cast<std::uint32_t>(group->centers_2d.size());
    }
    const auto lock = thread::lock_awake(best_mutex_);
    auto& best = best_[key].group;
    if (!best || best->score > group->score) best.swap(group);
}

// By whoever finds no candidate any more, so that the threads end together.  A carrier that was
// refused is told of when its turn comes.
void Encoder::mux_finished_(const CandidateQueue& queue) {
    for (const auto& carrier : queue.finished())
        if (Winner* const winner = take_winner_(carrier)) winner->is_muxed = muxer_(*winner->group);
}

// None that another thread has.
Encoder::Winner* Encoder::take_winner_(const api::ChannelVariant& carrier) {
    const auto lock = thread::lock_awake(best_mutex_);
    const auto best = best_.find(carrier);
    if (best == best_.end() || best->second.is_taken) return nullptr;
    best->second.is_taken = true;
    return &best->second;
}

bool Encoder::finish_frame_() {
    const auto lock = thread::lock_awake(best_mutex_);
    if (!remember_bitlines_()) return false;

    auto out = output_pingpong_->start_filling();
    if (!out) return false;
    plots_.start_frame(span_);
    for (auto& [carrier, winner] : best_)
        if (!finish_winner_(winner, *out)) return false;
    return plots_.end_frame(span_);
}

bool Encoder::remember_bitlines_() {
    return output_layout_.each_channel([this](const api::Channel& carrier) {
        const api::ChannelVariant key(carrier);
        const auto best = best_.find(key);
        if (best == best_.end()) return false;
        prev_bitlines_[key] = best->second.group->nr_bitlines;
        return true;
    });
}

bool Encoder::finish_winner_(const Winner& winner, Frames& out) {
    encode::Group& group = *winner.group;
    if (!winner.is_muxed) return false;
    out.set(group.frame);
    candidate_log_.add_winner(group);
    if (!plots_.add(group)) return false;
    for (std::size_t i = 0; i < group.origs.size(); ++i)
        quality_[group.origs[i].key].update_db(group.dbrms[i], group.dbpeak[i]);
    return true;
}

}  // namespace vela::codec::v3::encoder
