#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>

namespace vela::codec::v3::encoder {

void CandidateQueue::push(const std::shared_ptr<const encode::Group>& draft,
                          std::uint32_t nr_bitlines) {
    lanes_.try_emplace(draft->frame.key.channel.id(), draft).first->second.counts.push(nr_bitlines);
    next_ = lanes_.begin();
}

std::optional<CandidateQueue::Candidate> CandidateQueue::pop() {
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < lanes_.size(); ++i) {
        if (next_ == lanes_.end()) next_ = lanes_.begin();
        Lane& lane = (next_++)->second;
        if (!lane.may_go_on()) continue;

        const std::uint32_t nearest = lane.counts.top();
        lane.counts.pop();
        ++lane.nr_handed_out;
        ++lane.nr_at_work;
        return Candidate(*this, lane, nearest);
    }
    return std::nullopt;
}

bool CandidateQueue::Lane::may_go_on() const {
    constexpr unsigned nr_mostly_needed = 3;
    return !counts.empty() && (nr_handed_out < nr_mostly_needed || nr_at_work == 0);
}

void CandidateQueue::take_back_(Lane& lane) {
    const std::lock_guard lock(mutex_);
    --lane.nr_at_work;
}

std::vector<api::ChannelVariant> CandidateQueue::finished() const {
    const std::lock_guard lock(mutex_);
    std::vector<api::ChannelVariant> carriers;
    for (const auto& [id, lane] : lanes_)
        if (lane.counts.empty() && lane.nr_at_work == 0) carriers.push_back(lane.draft->frame.key);
    return carriers;
}

}  // namespace vela::codec::v3::encoder
