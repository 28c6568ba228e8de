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
    forget_winners_();
    chain_.start_frame();
    nr_failures_ = 0;
    queue_.start();
    if (!queue_candidates_()) return false;

    {
        // On every way out: what the other threads work on ends here.
        const OnRAII stop([this] { pool_.stop(); });
        if (!start_threads_()) return false;
        // The calling thread works, too: it would only wait otherwise.
        work_();
    }
    return nr_failures_ == 0 && finish_frame_();
}

void Encoder::forget_winners_() {
    for (auto& [key, carrier] : carriers_) {
        carrier.spare_groups.give_back(std::move(carrier.best));
        carrier.is_muxed = false;
    }
}

bool Encoder::start_threads_() {
    const auto help = [this] {
        work_();
        return false;
    };
    return nr_at_once_ <= 1 || pool_.start(help, nr_at_once_ - 1);
}

bool Encoder::queue_candidates_() {
    const auto frames = downmixed_.start_draining();
    return frames && add_groups_(*frames);
}

bool Encoder::add_groups_(const Frames& frames) {
    const CarrierRecipe* const recipe = find_recipe(input_layout_);
    if (!recipe || recipe->carrier != output_layout_.mask()) return false;
    return std::ranges::all_of(
        recipe->groups, [&](const CarrierRecipe::Group& group) { return add_(frames, group); });
}

bool Encoder::add_(const Frames& frames, const CarrierRecipe::Group& recipe) {
    const auto channel = api::Channel::create(recipe.carrier);
    const GroupPtr draft = start_draft_(carriers_[api::ChannelVariant(channel)]);
    for (const auto id : recipe.active_members())
        if (!set_origs_(*draft, api::ChannelVariant(api::Channel::create(id)), frames))
            return false;
    set_carrier_(*draft, channel);
    for (std::uint32_t b = bitline_min_; b <= bitline_max_; ++b)
        queue_.push(draft, b);
    return true;
}

// In the memory of the one before.  What is not set here is set by the other steps, or never
// changes.
Encoder::GroupPtr Encoder::start_draft_(Carrier& carrier) const {
    auto& draft = carrier.draft;
    if (!draft) draft = encode::Group::create(input_layout_, output_layout_, span_);
    draft->span = span_;
    draft->origs.clear();
    draft->centers_max = centers_max_;
    draft->centers_min = 1;
    draft->dither = dither_;
    return draft;
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
    group.frame.key = api::ChannelVariant(carrier);
    if (const auto prev = carriers_.at(group.frame.key).prev_bitlines) group.prev_bitlines = *prev;
    if (metadata_channel(output_layout_) == carrier.id()) set_metadata_(group);
}

void Encoder::set_metadata_(encode::Group& group) const {
    group.meta = meta_.due(span_);
    group.loudness = loudness_;
    group.preset.reset();
    if (const auto preset = preset_.due(span_)) group.preset = static_cast<std::uint8_t>(*preset);
    group.room_type.reset();
    if (const auto room_type = room_type_.due(span_))
        group.room_type = static_cast<std::uint32_t>(*room_type);
    group.version = version_.due(span_);
    group.git_hash = git_hash_.due(span_);
}

// In one call all that this thread may have: what waits for its last candidate is for it alone.
void Encoder::work_() {
    using First = CandidateQueue::First;
    const First first = nr_at_once_ > 1 ? First::mix : First::turn;
    while (const auto candidate = queue_.pop(first))
        try_(*candidate);
    mux_finished_();
}

// One that fails does not keep others from being tried.
void Encoder::try_(const CandidateQueue::Candidate& candidate) {
    if (chain_.drops(candidate.draft(), candidate.nr_bitlines())) return;

    Carrier& carrier = carriers_.at(candidate.draft().frame.key);
    GroupPtr group = create_group_(carrier, candidate);
    const Code code = chain_(*group);
    candidate_log_.add(*group, code);
    if (code == Code::failure) ++nr_failures_;
    if (code == Code::ok) select_best_(carrier, group);
    carrier.spare_groups.give_back(std::move(group));
}

Encoder::GroupPtr Encoder::create_group_(Carrier& carrier,
                                         const CandidateQueue::Candidate& candidate) {
    const std::uint32_t nr_bitlines = candidate.nr_bitlines();
    auto group = carrier.spare_groups.copy(candidate.draft());
    group->nr_bitlines = nr_bitlines;
    const auto [with_2, with_3] = carrier.prev_centers[nr_bitlines];
    group->centers_start_2 = with_2 == 0 ? centers_start(nr_bitlines) : with_2 + centers_margin;
    group->centers_start_3 = with_3 == 0 ? centers_start(nr_bitlines) : with_3 + centers_margin;
    return group;
}

// Leaves the one that is needed no more, if any.
void Encoder::select_best_(Carrier& carrier, GroupPtr& group) {
    if (!group->has_score) return;
    auto& [with_2, with_3] = carrier.prev_centers[group->nr_bitlines];
    if (group->active.size() == 2) with_2 = static_cast<std::uint32_t>(group->centers_1d.size());
    if (group->active.size() == 3) with_3 = static_cast<std::uint32_t>(group->centers_2d.size());

    const auto lock = thread::lock_awake(carrier.best_mutex);
    auto& best = carrier.best;
    if (!best || best->score > group->score) best.swap(group);
}

// By whoever finds no candidate any more, so that the threads end together.  A carrier that was
// refused is told of when its turn comes.
void Encoder::mux_finished_() {
    while (const auto key = queue_.pop_finished()) {
        Carrier& carrier = carriers_.at(*key);
        if (carrier.best) carrier.is_muxed = muxer_(*carrier.best);
    }
}

bool Encoder::finish_frame_() {
    if (!remember_bitlines_()) return false;

    auto out = output_pingpong_->start_filling();
    if (!out) return false;
    plots_.start_frame(span_);
    for (const auto& [key, carrier] : carriers_)
        if (!finish_winner_(carrier, *out)) return false;
    return plots_.end_frame(span_);
}

bool Encoder::remember_bitlines_() {
    return output_layout_.each_channel([this](const api::Channel& channel) {
        const auto at = carriers_.find(api::ChannelVariant(channel));
        if (at == carriers_.end() || !at->second.best) return false;
        at->second.prev_bitlines = at->second.best->nr_bitlines;
        return true;
    });
}

bool Encoder::finish_winner_(const Carrier& carrier, Frames& out) {
    encode::Group& group = *carrier.best;
    if (!carrier.is_muxed) return false;
    out.set(group.frame);
    candidate_log_.add_winner(group);
    if (!plots_.add(group)) return false;
    for (std::size_t i = 0; i < group.origs.size(); ++i)
        quality_[group.origs[i].key].update_db(group.dbrms[i], group.dbpeak[i]);
    return true;
}

}  // namespace vela::codec::v3::encoder
