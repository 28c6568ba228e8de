#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <queue>
#include <vector>
#include <vela/api/Channel.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encoder {

/// The candidates of one frame, handed out carrier by carrier in turn, each carrier's nearest to
/// the count of bit-lines that it chose in the frame before first.
///
/// Equal distances come in the order of a standard binary heap; what the filter skips, and so the
/// bytes of the carrier, depends on it.
class CandidateQueue {
public:
    using GroupPtr = std::shared_ptr<encode::Group>;

    void push(const api::Channel& carrier, GroupPtr group) {
        queues_[carrier].push(std::move(group));
    }

    /// Hands all candidates to `f`, until it returns false; false if it did.
    template <typename F>
    bool feed(F&& f) {
        while (!queues_.empty()) {
            for (auto at = queues_.begin(); at != queues_.end();) {
                auto& queue = at->second;
                if (queue.empty()) {
                    at = queues_.erase(at);
                    continue;
                }
                const GroupPtr nearest = queue.top();
                queue.pop();
                if (!f(nearest)) return false;
                ++at;
            }
        }
        return true;
    }

private:
    struct DistanceFromPrevBitline {
        static std::uint32_t distance(const GroupPtr& group) {
            const std::uint32_t a = group->prev_bitlines;
            const std::uint32_t b = group->nr_bitlines;
            return a > b ? a - b : b - a;
        }
        bool operator()(const GroupPtr& a, const GroupPtr& b) const {
            return distance(a) > distance(b);
        }
    };
    using Queue = std::priority_queue<GroupPtr, std::vector<GroupPtr>, DistanceFromPrevBitline>;

    std::map<api::Channel, Queue> queues_;
};

}  // namespace vela::codec::v3::encoder
