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
#include <vela/cache_line.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encoder {

/// The candidates of each carrier's current frame, each carrier's nearest to the count of bit-lines
/// that it chose in the frame before first.
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
/// Threads:  any number may push and pop, as long as what they got goes before the queue does.
class CandidateQueue {
    struct Lane;

public:
    /// Which carriers come first: all in turn; or those of the thread that asks, else others', and
    /// among them the one that is farthest behind, then a mix before a single channel.
    enum class First { turn, own };

    /// A candidate that was handed out; at work until its end, or that of its life.
    class Candidate {
    public:
        /// What all candidates of a carrier have in common.
        [[nodiscard]] const encode::Group& draft() const { return *lane_->draft; }
        [[nodiscard]] std::uint32_t nr_bitlines() const { return nr_bitlines_; }

        /// Done with; nothing may be asked of it any more.  Whether it was its carrier's last one.
        [[nodiscard]] bool end() { return end_(lane_.release()); }

    private:
        friend class CandidateQueue;
        static bool end_(Lane* lane) { return --lane->nr_left == 0; }
        struct Return {
            void operator()(Lane* lane) const { end_(lane); }
        };

        Candidate(Lane& lane, std::uint32_t nr_bitlines)
            : lane_(&lane), nr_bitlines_(nr_bitlines) {}

        std::unique_ptr<Lane, Return> lane_;
        std::uint32_t nr_bitlines_;
    };

    /// The next frame of the carrier that the draft names, with a candidate for each count of
    /// bit-lines from `min` to `max`.  REQUIRES that there is one, and that the last candidate of
    /// the frame before ended.
    void push(const std::shared_ptr<const encode::Group>& draft, std::uint32_t min,
              std::uint32_t max);

    /// Changes with each push, for who found nothing left and stays awake for more.
    [[nodiscard]] std::uint64_t nr_pushed() const { return nr_pushed_; }

    /// Nothing once all that is left waits for a candidate at work, or nothing is left.
    std::optional<Candidate> pop(First first = First::turn);

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
    struct alignas(cache_line) Lane {
        [[nodiscard]] Farther farther() const { return {draft->prev_bitlines}; }
        [[nodiscard]] bool is_anothers() const;
        [[nodiscard]] bool may_go_on() const;

        std::shared_ptr<const encode::Group> draft;
        std::int64_t start = 0;  // of the draft's span
        bool is_mix = false;
        std::vector<std::uint32_t> counts;  // a heap
        unsigned nr_handed_out = 0;
        std::atomic<std::size_t> nr_left = 0;  // those at work and the counts
        std::thread::id whose;                 // who had its first candidate of a frame, last
    };
    using Lanes = std::map<std::uint32_t, Lane>;  // by id of the carrier

    Lane* find_next_(First first);

    // The mutex guards all of these; what is atomic may be read, and counted down, without.
    Lanes lanes_;
    std::atomic<std::uint64_t> nr_pushed_ = 0;
    std::mutex mutex_;
};

}  // namespace vela::codec::v3::encoder
