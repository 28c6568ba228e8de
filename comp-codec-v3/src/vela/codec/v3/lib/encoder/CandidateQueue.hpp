#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <queue>
#include <utility>
#include <vector>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encoder {

/// The candidates of one frame, handed out carrier by carrier in turn, each carrier's nearest to
/// the count of bit-lines that it chose in the frame before first.
///
/// Equal distances come in the order of a standard binary heap; what the filter skips, and so the
/// bytes of the carrier, depends on it.
///
/// The score of a carrier's third candidate mostly tells that the others cannot win.  So these wait
/// until none of their carrier is at work, and whoever was at work on it takes them up: with two
/// threads, of 17 candidates that were tried in a frame one had been begun in vain, as its last.
///
/// Threads:  one pushes; then any number may pop, as long as what they got goes before the queue
/// does.
class CandidateQueue {
    struct Lane;

public:
    /// Which carriers somebody takes first: whoever's turn it is, or those with a mix.  What is
    /// left for the end then takes a twentieth of the time, so that all who take part end together.
    enum class First { turn, mix };

    /// A candidate that was handed out; at work until the end of its life.
    class Candidate {
    public:
        /// What all candidates of a carrier have in common.
        [[nodiscard]] const encode::Group& draft() const { return *lane_->draft; }
        [[nodiscard]] std::uint32_t nr_bitlines() const { return nr_bitlines_; }

    private:
        friend class CandidateQueue;
        struct Return {
            CandidateQueue* queue;
            void operator()(Lane* lane) const { queue->take_back_(*lane); }
        };

        Candidate(CandidateQueue& queue, Lane& lane, std::uint32_t nr_bitlines)
            : lane_(&lane, Return{&queue}), nr_bitlines_(nr_bitlines) {}

        std::unique_ptr<Lane, Return> lane_;
        std::uint32_t nr_bitlines_;
    };

    /// One candidate more for the carrier that the draft names; all of a carrier have one draft.
    void push(const std::shared_ptr<const encode::Group>& draft, std::uint32_t nr_bitlines);

    /// Nothing once all that is left waits for a candidate at work, or nothing is left.
    std::optional<Candidate> pop(First first = First::turn);

    /// The carriers of which no candidate is left and none at work.
    [[nodiscard]] std::vector<api::ChannelVariant> finished() const;

private:
    struct Farther {
        std::uint32_t prev_bitlines;
        [[nodiscard]] std::uint32_t distance(std::uint32_t nr_bitlines) const {
            return nr_bitlines > prev_bitlines ? nr_bitlines - prev_bitlines
                                               : prev_bitlines - nr_bitlines;
        }
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return distance(a) > distance(b);
        }
    };
    /// One carrier.
    struct Lane {
        explicit Lane(const std::shared_ptr<const encode::Group>& of)
            : draft(of), counts(Farther{of->prev_bitlines}) {}

        [[nodiscard]] bool comes_first(First first) const;
        [[nodiscard]] bool may_go_on() const;

        std::shared_ptr<const encode::Group> draft;
        std::priority_queue<std::uint32_t, std::vector<std::uint32_t>, Farther> counts;
        unsigned nr_handed_out = 0;
        unsigned nr_at_work = 0;
    };
    using Lanes = std::map<std::uint32_t, Lane>;  // by id of the carrier

    Lane* find_next_(First first);
    void take_back_(Lane& lane);

    Lanes lanes_;
    mutable std::mutex mutex_;
};

}  // namespace vela::codec::v3::encoder
