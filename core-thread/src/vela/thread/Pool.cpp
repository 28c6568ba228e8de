#include <utility>
#include <vela/thread/Pool.hpp>

namespace vela::thread {

Pool::Pool(unsigned long nr_threads) : nr_threads_(nr_threads) {
    for (std::uint64_t i = 0; i < nr_threads_; ++i)
        threads_.emplace_back([this] { (*this)(); });
}

Pool::~Pool() {
    stop();
    {
        const Lock lock(mutex_);
        quit_ = true;
    }
    start_cv_.notify_all();
    while (!threads_.empty()) {
        threads_.front().join();
        threads_.pop_front();
    }
}

bool Pool::start_(std::function<bool()> task) {
    Lock lock(mutex_);
    if (nr_threads_ == 0 || state_ != State::idle) return false;

    task_ = std::move(task);
    on_all_done_ = [] {};
    state_ = State::starting;
    start_cv_.notify_all();
    // A quick task may have made some threads finished by now: they have taken it up, too.
    control_cv_.wait(lock, [this] { return nr_running_ + nr_finished_ == nr_threads_; });
    state_ = State::running;
    return true;
}

bool Pool::stop() {
    Lock lock(mutex_);
    if (state_ != State::running) return false;

    state_ = State::stopping;
    start_cv_.notify_all();
    control_cv_.wait(lock, [this] { return nr_running_ == 0 && nr_finished_ == 0; });
    state_ = State::idle;
    task_ = nullptr;
    on_all_done_ = nullptr;
    return true;
}

void Pool::operator()() {
    Lock lock(mutex_);
    auto phase = Phase::waiting;
    while (!quit_) {
        switch (phase) {
            case Phase::waiting:
                phase = wait_for_start_(lock);
                break;
            case Phase::running:
                phase = run_task_(lock);
                break;
            case Phase::finished:
                phase = wait_for_stop_(lock);
                break;
        }
    }
}

Pool::Phase Pool::wait_for_start_(Lock& lock) {
    start_cv_.wait(lock, [this] { return state_ == State::starting || quit_; });
    if (state_ != State::starting) return Phase::waiting;
    ++nr_running_;
    control_cv_.notify_one();
    return Phase::running;
}

Pool::Phase Pool::run_task_(Lock& lock) {
    if (state_ == State::stopping) {
        --nr_running_;
        control_cv_.notify_one();
        return Phase::waiting;
    }
    lock.unlock();
    const bool again = task_();
    lock.lock();
    if (again) return Phase::running;

    --nr_running_;
    ++nr_finished_;
    if (nr_running_ == 0 && nr_finished_ == nr_threads_) {
        // Still counted as finished, so that `stop` waits and leaves the function in place.
        lock.unlock();
        on_all_done_();
        lock.lock();
    }
    return Phase::finished;
}

Pool::Phase Pool::wait_for_stop_(Lock& lock) {
    start_cv_.wait(lock, [this] { return state_ == State::stopping || quit_; });
    if (state_ != State::stopping) return Phase::finished;
    --nr_finished_;
    control_cv_.notify_one();
    return Phase::waiting;
}

}  // namespace vela::thread
