#include <algorithm>
#include <tuple>
#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encoder {

void CandidateQueue::push(const std::shared_ptr<const encode::Group>& draft, std::uint32_t min,
                          std::uint32_t max) {
    const auto lock = thread::lock_awake(mutex_);
    Lane& lane = lanes_[draft->frame.key.channel.id()];
    lane.draft = draft;
    for (auto nr_bitlines = min; nr_bitlines <= max; ++nr_bitlines) {
        lane.counts.push_back(nr_bitlines);
        std::ranges::push_heap(lane.counts, lane.farther());
    }
    lane.nr_handed_out = 0;
    lane.start = draft->span.start;
    lane.is_mix = draft->origs.size() > 1;
    lane.nr_left = lane.counts.size();
    ++nr_pushed_;
}

std::optional<CandidateQueue::Candidate> CandidateQueue::pop(First first) {
    const auto lock = thread::lock_awake(mutex_);
    Lane* const lane = find_next_(first);
    if (!lane) return std::nullopt;

    if (lane->nr_handed_out == 0) lane->whose = std::this_thread::get_id();
    std::ranges::pop_heap(lane->counts, lane->farther());
    const std::uint32_t nearest = lane->counts.back();
    lane->counts.pop_back();
    ++lane->nr_handed_out;
    return Candidate(*lane, nearest);
}

// Of several that come first, the one that has had the fewest; of these, the one with the lowest
// id.
CandidateQueue::Lane* CandidateQueue::find_next_(First first) {
    const auto rank = [first](const Lane& lane) {
        if (first == First::turn)
            return std::tuple(false, std::int64_t{0}, false, lane.nr_handed_out);
        return std::tuple(lane.is_anothers(), lane.start, !lane.is_mix, lane.nr_handed_out);
    };
    Lane* next = nullptr;
    for (auto& [id, lane] : lanes_)
        if (lane.may_go_on() && (!next || rank(lane) < rank(*next))) next = &lane;
    return next;
}

bool CandidateQueue::Lane::is_anothers() const {
    return whose != std::thread::id() && whose != std::this_thread::get_id();
}

bool CandidateQueue::Lane::may_go_on() const {
    constexpr unsigned nr_mostly_needed = 3;
    const bool is_none_at_work = nr_left == counts.size();
    return !counts.empty() && (nr_handed_out < nr_mostly_needed || is_none_at_work);
}

}  // namespace vela::codec::v3::encoder
