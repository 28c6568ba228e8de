#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
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
/// What a candidate needs lies near whoever was at work on its carrier last.  So each carrier is
/// one thread's, frame after frame, until another one has nothing else to do.
///
/// Threads:  one starts and pushes; then any number may pop, as long as what they got goes before
/// the next start and before the queue does.
class CandidateQueue {
    struct Lane;

public:
    /// Which carriers somebody takes first: whoever's turn it is; or those with a mix, of these and
    /// of the others its own.  What is left for the end then takes a twentieth of the time, so that
    /// all who take part end together.
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
            void operator()(Lane* lane) const { --lane->nr_at_work; }
        };

        Candidate(Lane& lane, std::uint32_t nr_bitlines)
            : lane_(&lane), nr_bitlines_(nr_bitlines) {}

        std::unique_ptr<Lane, Return> lane_;
        std::uint32_t nr_bitlines_;
    };

    /// Forgets all candidates, for the next frame.
    void start();

    /// One candidate more for the carrier that the draft names; all of a carrier have one draft.
    void push(const std::shared_ptr<const encode::Group>& draft, std::uint32_t nr_bitlines);

    /// Nothing once all that is left waits for a candidate at work, or nothing is left.
    std::optional<Candidate> pop(First first = First::turn);

    /// A carrier of which no candidate is left and none at work, its own first; each is told once.
    /// Nothing if there is none.
    std::optional<api::ChannelVariant> pop_finished();

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
        [[nodiscard]] Farther farther() const { return {draft->prev_bitlines}; }
        [[nodiscard]] bool is_mix() const { return draft->origs.size() > 1; }
        [[nodiscard]] bool is_anothers() const;
        [[nodiscard]] bool may_go_on() const;

        std::shared_ptr<const encode::Group> draft;
        std::vector<std::uint32_t> counts;  // a heap
        unsigned nr_handed_out = 0;
        std::atomic<unsigned> nr_at_work = 0;
        bool is_told = false;   // that it is finished
        std::thread::id whose;  // who had its first candidate of a frame, last
    };
    using Lanes = std::map<std::uint32_t, Lane>;  // by id of the carrier

    Lane* find_next_(First first);

    Lanes lanes_;
    std::mutex mutex_;
};

}  // namespace vela::codec::v3::encoder
