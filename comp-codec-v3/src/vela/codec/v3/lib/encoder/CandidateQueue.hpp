#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <queue>
#include <utility>
#include <vector>
#include <vela/api/Channel.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encoder {

/// The candidates of one frame, handed out carrier by carrier in turn, each carrier's nearest to
/// the count of bit-lines that it chose in the frame before first.
///
/// Equal distances come in the order of a standard binary heap; what the filter skips, and so the
/// bytes of the carrier, depends on it.
///
/// Threads:  push first, then any number of them may pop.
class CandidateQueue {
public:
    /// What all candidates of a carrier have in common, and one count of bit-lines.
    struct Candidate {
        std::shared_ptr<const encode::Group> draft;
        std::uint32_t nr_bitlines = 0;
    };

    void push(const api::Channel& carrier, Candidate candidate) {
        queues_[carrier].push(std::move(candidate));
        next_ = queues_.begin();
    }

    /// Nothing once all have been handed out.
    std::optional<Candidate> pop() {
        const std::lock_guard lock(mutex_);
        while (!queues_.empty()) {
            if (next_ == queues_.end()) next_ = queues_.begin();
            auto& queue = next_->second;
            if (queue.empty()) {
                next_ = queues_.erase(next_);
                continue;
            }
            Candidate nearest = queue.top();
            queue.pop();
            ++next_;
            return nearest;
        }
        return std::nullopt;
    }

private:
    struct DistanceFromPrevBitline {
        static std::uint32_t distance(const Candidate& candidate) {
            const std::uint32_t a = candidate.draft->prev_bitlines;
            const std::uint32_t b = candidate.nr_bitlines;
            return a > b ? a - b : b - a;
        }
        bool operator()(const Candidate& a, const Candidate& b) const {
            return distance(a) > distance(b);
        }
    };
    using Queue = std::priority_queue<Candidate, std::vector<Candidate>, DistanceFromPrevBitline>;
    using Queues = std::map<api::Channel, Queue>;

    Queues queues_;
    Queues::iterator next_ = queues_.begin();
    std::mutex mutex_;
};

}  // namespace vela::codec::v3::encoder
