// The search of the encoder: from the frames of one block to the best candidate per carrier.

#include <algorithm>
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
    if (!add_groups_()) return false;
    if (bitline_min_ > bitline_max_) return false;  // no candidate, and so no winner
    begin_turn_();
    return start_threads_();
}

bool Encoder::add_groups_() {
    const auto frames = downmixed_.start_draining();
    const CarrierRecipe* const recipe = find_recipe(input_layout_);
    if (!frames || !recipe || recipe->carrier != output_layout_.mask()) return false;
    return std::ranges::all_of(
        recipe->groups, [&](const CarrierRecipe::Group& group) { return add_(*frames, group); });
}

bool Encoder::add_(const Frames& frames, const CarrierRecipe::Group& recipe) {
    const auto channel = api::Channel::create(recipe.carrier);
    const GroupPtr draft = start_draft_(carriers_.at(api::ChannelVariant(channel)));
    for (const auto id : recipe.active_members())
        if (!set_origs_(*draft, api::ChannelVariant(api::Channel::create(id)), frames))
            return false;
    set_carrier_(*draft, channel);
    return true;
}

// In the memory of an earlier one.  What is not set here is set by the other steps, or never
// changes.
Encoder::GroupPtr Encoder::start_draft_(Carrier& carrier) const {
    auto& draft = carrier.searches[nr_begun_ % max_under_way_].draft;
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

void Encoder::begin_turn_() {
    Turn& turn = turns_[nr_begun_++ % max_under_way_];
    turn.span = span_;
    turn.nr_failures = 0;
    turn.nr_unfinished = carriers_.size();
    for (auto& [key, carrier] : carriers_)
        if (carrier.nr_under_way++ == 0) search_(carrier);
}

bool Encoder::start_threads_() {
    const auto help = [this] {
        work_();
        return false;
    };
    return nr_at_once_ <= 1 || pool_.again() || pool_.start(help, nr_at_once_ - 1);
}

Encoder::Search& Encoder::current_(Carrier& carrier) const {
    return carrier.searches[carrier.nr_finished % max_under_way_];
}

Encoder::Turn& Encoder::turn_of_(const Carrier& carrier) {
    return turns_[carrier.nr_finished % max_under_way_];
}

// By whoever finished the carrier's frame before, or by who begins this one if that was earlier.
void Encoder::search_(Carrier& carrier) {
    Search& search = current_(carrier);
    carrier.spare_groups.give_back(std::move(search.best));
    if (carrier.prev_bitlines) search.draft->prev_bitlines = *carrier.prev_bitlines;
    chain_.start_frame(search.draft->frame.key);
    queue_.push(search.draft, bitline_min_, bitline_max_);
}

// In one call all that this thread may have, or as much as it takes for the frame to end: what
// waits for its last candidate is for it alone.
void Encoder::work_(const Turn* last) {
    using First = CandidateQueue::First;
    const First first = nr_at_once_ > 1 ? First::own : First::turn;
    while (!last || last->nr_unfinished != 0) {
        auto candidate = queue_.pop(first);
        if (!candidate) return;
        Carrier& carrier = carriers_.at(candidate->draft().frame.key);
        try_(carrier, *candidate);
        if (candidate->end()) finish_(carrier);
    }
}

// One that fails does not keep others from being tried.
void Encoder::try_(Carrier& carrier, const CandidateQueue::Candidate& candidate) {
    if (chain_.drops(candidate.draft(), candidate.nr_bitlines())) return;

    GroupPtr group = create_group_(carrier, candidate);
    const Code code = chain_(*group);
    candidate_log_.add(*group, code);
    if (code == Code::failure) ++turn_of_(carrier).nr_failures;
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
void Encoder::select_best_(Carrier& carrier, GroupPtr& group) const {
    if (!group->has_score) return;
    auto& [with_2, with_3] = carrier.prev_centers[group->nr_bitlines];
    if (group->active.size() == 2) with_2 = static_cast<std::uint32_t>(group->centers_1d.size());
    if (group->active.size() == 3) with_3 = static_cast<std::uint32_t>(group->centers_2d.size());

    const auto lock = thread::lock_awake(carrier.best_mutex);
    auto& best = current_(carrier).best;
    if (!best || best->score > group->score) best.swap(group);
}

// By whoever had its last candidate.  A carrier that is refused is told of when its frame ends.
void Encoder::finish_(Carrier& carrier) {
    Search& search = current_(carrier);
    if (search.best) {
        carrier.prev_bitlines = search.best->nr_bitlines;
        search.is_muxed = muxer_(*search.best);
    }

    Turn& turn = turn_of_(carrier);
    ++carrier.nr_finished;
    if (--carrier.nr_under_way != 0) search_(carrier);
    if (--turn.nr_unfinished != 0) return;
    // The calling thread is asleep by then, or will not fall asleep any more.
    { const std::lock_guard lock(ended_mutex_); }
    ended_cv_.notify_one();
}

bool Encoder::end_groups_() {
    const std::uint64_t frame = nr_ended_++;
    const Turn& turn = turns_[frame % max_under_way_];
    work_until_ended_(turn);
    if (nr_ended_ == nr_begun_) pool_.stop();
    return turn.nr_failures == 0 && finish_frame_(frame);
}

// The calling thread works, too: it would only wait otherwise.
void Encoder::work_until_ended_(const Turn& turn) {
    const auto is_ended = [&] { return turn.nr_unfinished == 0; };
    while (!is_ended()) {
        const std::uint64_t nr_pushed = queue_.nr_pushed();
        work_(&turn);
        const auto may_go_on = [&] { return is_ended() || queue_.nr_pushed() != nr_pushed; };
        if (thread::wait_awake(thread::patience, may_go_on)) continue;
        std::unique_lock lock(ended_mutex_);
        ended_cv_.wait(lock, is_ended);
    }
}

bool Encoder::finish_frame_(std::uint64_t frame) {
    const auto at = frame % max_under_way_;
    const auto has_winner = [=](const auto& entry) { return !!entry.second.searches[at].best; };
    if (!std::ranges::all_of(carriers_, has_winner)) return false;

    auto out = output_pingpong_->start_filling();
    if (!out) return false;
    plots_.start_frame(turns_[at].span);
    for (const auto& [key, carrier] : carriers_)
        if (!finish_winner_(carrier.searches[at], *out)) return false;
    return plots_.end_frame(turns_[at].span);
}

bool Encoder::finish_winner_(const Search& search, Frames& out) {
    if (!search.is_muxed) return false;
    encode::Group& group = *search.best;
    out.set(group.frame);
    candidate_log_.add_winner(group);
    if (!plots_.add(group)) return false;
    for (std::size_t i = 0; i < group.origs.size(); ++i)
        quality_[group.origs[i].key].update_db(group.dbrms[i], group.dbpeak[i]);
    return true;
}

}  // namespace vela::codec::v3::encoder
