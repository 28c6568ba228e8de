#include <tuple>
#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encoder {

void CandidateQueue::push(const std::shared_ptr<const encode::Group>& draft,
                          std::uint32_t nr_bitlines) {
    lanes_.try_emplace(draft->frame.key.channel.id(), draft).first->second.counts.push(nr_bitlines);
}

std::optional<CandidateQueue::Candidate> CandidateQueue::pop(First first) {
    const auto lock = thread::lock_awake(mutex_);
    Lane* const lane = find_next_(first);
    if (!lane) return std::nullopt;

    const std::uint32_t nearest = lane->counts.top();
    lane->counts.pop();
    ++lane->nr_handed_out;
    ++lane->nr_at_work;
    return Candidate(*this, *lane, nearest);
}

// Whose turn it is: the carrier that has had the fewest; of several, the one with the lowest id.
CandidateQueue::Lane* CandidateQueue::find_next_(First first) {
    const auto comes_before = [first](const Lane& a, const Lane& b) {
        return std::tuple(!a.comes_first(first), a.nr_handed_out) <
               std::tuple(!b.comes_first(first), b.nr_handed_out);
    };
    Lane* next = nullptr;
    for (auto& [id, lane] : lanes_)
        if (lane.may_go_on() && (!next || comes_before(lane, *next))) next = &lane;
    return next;
}

bool CandidateQueue::Lane::comes_first(First first) const {
    return first == First::mix && draft->origs.size() > 1;
}

bool CandidateQueue::Lane::may_go_on() const {
    constexpr unsigned nr_mostly_needed = 3;
    return !counts.empty() && (nr_handed_out < nr_mostly_needed || nr_at_work == 0);
}

void CandidateQueue::take_back_(Lane& lane) {
    const auto lock = thread::lock_awake(mutex_);
    --lane.nr_at_work;
}

std::vector<api::ChannelVariant> CandidateQueue::finished() const {
    const auto lock = thread::lock_awake(mutex_);
    std::vector<api::ChannelVariant> carriers;
    for (const auto& [id, lane] : lanes_)
        if (lane.counts.empty() && lane.nr_at_work == 0) carriers.push_back(lane.draft->frame.key);
    return carriers;
}

}  // namespace vela::codec::v3::encoder
