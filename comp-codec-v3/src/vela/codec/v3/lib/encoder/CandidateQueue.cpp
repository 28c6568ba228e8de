#include <algorithm>
#include <tuple>
#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encoder {

void CandidateQueue::start() {
    for (auto& [id, lane] : lanes_) {
        lane.counts.clear();
        lane.nr_handed_out = 0;
        lane.is_told = true;  // as long as it has no candidates
    }
}

void CandidateQueue::push(const std::shared_ptr<const encode::Group>& draft,
                          std::uint32_t nr_bitlines) {
    Lane& lane = lanes_[draft->frame.key.channel.id()];
    lane.draft = draft;
    lane.counts.push_back(nr_bitlines);
    std::ranges::push_heap(lane.counts, lane.farther());
    lane.is_told = false;
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
    ++lane->nr_at_work;
    return Candidate(*lane, nearest);
}

// Of several that come first, the one that has had the fewest; of these, the one with the lowest
// id.
CandidateQueue::Lane* CandidateQueue::find_next_(First first) {
    const auto rank = [first](const Lane& lane) {
        if (first == First::turn) return std::tuple(false, false, lane.nr_handed_out);
        return std::tuple(!lane.is_mix(), lane.is_anothers(), lane.nr_handed_out);
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
    return !counts.empty() && (nr_handed_out < nr_mostly_needed || nr_at_work == 0);
}

std::optional<api::ChannelVariant> CandidateQueue::pop_finished() {
    const auto lock = thread::lock_awake(mutex_);
    Lane* next = nullptr;
    for (auto& [id, lane] : lanes_) {
        const bool is_new = !lane.is_told && lane.counts.empty() && lane.nr_at_work == 0;
        if (is_new && (!next || (next->is_anothers() && !lane.is_anothers()))) next = &lane;
    }
    if (!next) return std::nullopt;
    next->is_told = true;
    return next->draft->frame.key;
}

}  // namespace vela::codec::v3::encoder
