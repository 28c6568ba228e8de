#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace vela::thread {

/// A fixed set of threads that all run one task, over and over, until each gets false from it.
///
/// This is no queue: the task fetches its work itself.  A round goes from `start` to `stop`; the
/// threads live as long as the pool, so that a round makes no thread.
///
///     round     idle -> starting -> running -> stopping -> idle
///     thread    waiting -> running (-> finished, on false) -> waiting
///
/// A thread that got false sits out the rest of the round, or until there is more to do (`again`);
/// the others go on until they see it too.
///
/// To wake a thread on a processor that sleeps costs as much as a small candidate does.  So a round
/// wakes no more threads than it is started for, the same ones each time, whose memory is near, and
/// each of them once, and once more for each `again`: a thread that is finished sleeps until then.
/// The first of them stays awake for a while, since more to do is mostly near.
///
/// Threads:  one thread controls the pool; the task runs on all its threads at once, unlocked.
class Pool {
public:
    /// With 0 there is no thread, and the caller runs its work itself.
    explicit Pool(unsigned long nr_threads);
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    /// Stops a round that runs, then joins.
    ~Pool();

    [[nodiscard]] std::uint64_t nr_threads() const { return nr_threads_; }

    /// Runs a copy of `task`, a callable that returns bool, on every thread.  False, with nothing
    /// done, without threads or before the last round is stopped.
    template <typename F>
    [[nodiscard]] bool start(const F& task) {
        return start(task, nr_threads_);
    }

    /// The same on the first `nr_wanted` of the threads, 1 to all of them.
    template <typename F>
    [[nodiscard]] bool start(const F& task, std::uint64_t nr_wanted) {
        return start_(std::function<bool()>(task), nr_wanted);
    }

    /// More to do for the round: threads that are finished take up its task again, and those that
    /// run it once more after that.  False, with nothing done, if there is no round.
    bool again();

    /// Waits until all threads have taken up the task and are through with their current call, and
    /// ends the round; a call for more that nobody has followed by then ends with it.  False, at
    /// once, if there is no round.
    bool stop();

private:
    enum class State { idle, starting, running, stopping };
    using Lock = std::unique_lock<std::mutex>;

    struct Worker {
        std::uint64_t number = 0;
        std::uint64_t last_call = 0;       ///< that it has followed
        bool is_finished = false;          ///< with the task, in this round
        std::condition_variable start_cv;  ///< it waits here
        std::thread thread;
    };

    bool start_(std::function<bool()> task, std::uint64_t nr_wanted);
    void call_(Lock lock);

    /// The body of each thread.
    void operator()(Worker& worker);
    bool wait_for_round_(Worker& worker);
    [[nodiscard]] bool is_wanted_(const Worker& worker) const;
    void run_task_(Worker& worker);

    const std::uint64_t nr_threads_;
    std::atomic<State> state_ = State::idle;
    std::function<bool()> task_;
    std::function<void()> on_all_done_;
    std::list<Worker> threads_;
    std::atomic<std::uint64_t> nr_calls_ = 0;  // of `start` and `again`
    std::atomic<std::uint64_t> nr_wanted_ = 0;
    std::atomic<std::uint64_t> nr_running_ = 0;
    std::uint64_t nr_finished_ = 0;
    std::mutex mutex_;                    // guards all of these; what is atomic may be read without
    std::condition_variable control_cv_;  // `stop` waits here
    std::atomic<bool> quit_ = false;
};

}  // namespace vela::thread
