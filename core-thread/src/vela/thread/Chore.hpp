#pragma once

#include <atomic>
#include <functional>
#include <vela/thread/Errands.hpp>

namespace vela::thread {

/// A piece of work that comes up again and again, each time left to whoever has time.
///
///     whose work it is     post            finish: does it itself, unless somebody is at it
///     who has time             does it
///
/// Threads:  one at a time posts or finishes, and that may be an errand.  No errand may destroy the
/// chore, and its own work may not finish it.
class Chore {
public:
    /// `errands` must outlive this.
    Chore(Errands& errands, std::function<void()> work);
    Chore(const Chore&) = delete;
    Chore& operator=(const Chore&) = delete;
    ~Chore();

    /// The work is due; if it was before, it is finished first.
    void post();

    /// Returns when nothing is due.
    void finish();

private:
    enum class State { done, due, under_way };

    void run_errand_();
    void run_();

    Errands& errands_;
    const std::function<void()> work_;
    std::atomic<State> state_ = State::done;
    std::atomic<bool> is_posted_ = false;  // an errand waits, even if nothing is due any more
};

}  // namespace vela::thread
