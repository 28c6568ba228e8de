#include <utility>
#include <vela/OnRAII.hpp>
#include <vela/thread/Chore.hpp>
#include <vela/thread/awake.hpp>

namespace vela::thread {

Chore::Chore(Errands& errands, std::function<void()> work)
    : errands_(errands), work_(std::move(work)) {}

Chore::~Chore() {
    finish();
    errands_.finish();  // one that comes too late still points here
}

void Chore::post() {
    finish();
    state_ = State::due;
    if (!is_posted_.exchange(true)) errands_.post([this] { run_errand_(); });
}

// Not by `Errands::finish`: an errand that waits for all errands would wait for itself.
void Chore::finish() {
    run_();
    const auto is_done = [this] { return state_ == State::done; };
    if (!wait_awake(patience, is_done)) state_.wait(State::under_way);
}

void Chore::run_errand_() {
    is_posted_ = false;  // what becomes due from here on may be too late for this errand
    run_();
}

void Chore::run_() {
    auto due = State::due;
    if (!state_.compare_exchange_strong(due, State::under_way)) return;
    const OnRAII end([this] {
        state_ = State::done;
        state_.notify_all();
    });
    work_();
}

}  // namespace vela::thread
