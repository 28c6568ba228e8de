#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace vela::thread {

/// A fixed set of threads that all run one task, over and over, until each gets false from it.
///
/// This is no queue: the task fetches its work itself, from a `PingPong`, say.  A round goes from
/// `start` to `stop`; the threads live as long as the pool, so that a round makes no thread.
///
///     round     idle -> starting -> running -> stopping -> idle
///     thread    waiting -> running (-> finished, on false) -> waiting
///
/// A thread that got false sits out the rest of the round; the others go on until they see it too.
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

    /// Runs a copy of `task`, a callable that returns bool, on every thread; returns when all have
    /// taken it up.  False, with nothing done, without threads or before the last round is stopped.
    template <typename F>
    [[nodiscard]] bool start(const F& task) {
        return start_(std::function<bool()>(task));
    }

    /// Waits until each thread is through with its current call, and ends the round.  False, at
    /// once, if there is no round.
    bool stop();

private:
    enum class State { idle, starting, running, stopping };
    enum class Phase { waiting, running, finished };
    using Lock = std::unique_lock<std::mutex>;

    bool start_(std::function<bool()> task);

    /// The body of each thread, a function per phase; each gives the phase to go on with.
    void operator()();
    Phase wait_for_start_(Lock& lock);
    Phase run_task_(Lock& lock);
    Phase wait_for_stop_(Lock& lock);

    const std::uint64_t nr_threads_;
    State state_ = State::idle;
    std::function<bool()> task_;
    std::function<void()> on_all_done_;
    std::list<std::thread> threads_;
    std::uint64_t nr_running_ = 0;
    std::uint64_t nr_finished_ = 0;
    std::mutex mutex_;                    // guards all of these
    std::condition_variable start_cv_;    // the threads wait here
    std::condition_variable control_cv_;  // `start` and `stop` wait here
    bool quit_ = false;
};

}  // namespace vela::thread
