#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace vela::thread {

/// Small pieces of work for whoever has time to spare.
///
///     who has work          post  post  post           finish -> what nobody has begun, then waits
///     who has time             run_one  run_one  run_one
///
/// Nobody is woken for an errand: that takes longer than the errand does.  So what is posted may
/// well stay until `finish`.
///
/// Threads:  any number at once, in all calls.
class Errands {
public:
    using Errand = std::function<void()>;

    Errands() = default;
    Errands(const Errands&) = delete;
    Errands& operator=(const Errands&) = delete;

    void post(Errand errand);

    /// Many at once, so that whoever begins the first does not hold up the others' posting.
    void post(std::vector<Errand> errands);

    /// Runs the one that has waited longest.  False if none waits.
    bool run_one();

    /// Returns when all that was posted is done.
    void finish();

private:
    using Lock = std::unique_lock<std::mutex>;

    bool run_one_(Lock& lock);

    std::deque<Errand> waiting_;
    std::atomic<std::size_t> nr_waiting_ = 0;
    std::atomic<std::size_t> nr_under_way_ = 0;
    std::mutex mutex_;  // guards all of these; what is atomic may be read without
    std::condition_variable all_done_cv_;
};

}  // namespace vela::thread
