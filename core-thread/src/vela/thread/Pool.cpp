#include <utility>
#include <vela/thread/Pool.hpp>
#include <vela/thread/awake.hpp>

namespace vela::thread {

Pool::Pool(unsigned long nr_threads) : nr_threads_(nr_threads) {
    for (std::uint64_t i = 0; i < nr_threads_; ++i) {
        Worker& worker = threads_.emplace_back();
        worker.number = i;
        worker.thread = std::thread([this, &worker] { (*this)(worker); });
    }
}

Pool::~Pool() {
    stop();
    {
        const Lock lock(mutex_);
        quit_ = true;
        for (Worker& worker : threads_)
            worker.start_cv.notify_one();
    }
    while (!threads_.empty()) {
        threads_.front().thread.join();
        threads_.pop_front();
    }
}

bool Pool::start_(std::function<bool()> task, std::uint64_t nr_wanted) {
    Lock lock = lock_awake(mutex_);
    if (nr_wanted == 0 || nr_wanted > nr_threads_ || state_ != State::idle) return false;

    task_ = std::move(task);
    on_all_done_ = [] {};
    nr_wanted_ = nr_wanted;
    for (Worker& worker : threads_)
        worker.is_finished = false;
    state_ = State::starting;
    call_(std::move(lock));
    return true;
}

bool Pool::again() {
    Lock lock = lock_awake(mutex_);
    if (state_ == State::idle) return false;
    call_(std::move(lock));
    return true;
}

void Pool::call_(Lock lock) {
    ++nr_calls_;
    lock.unlock();
    for (Worker& worker : threads_)
        if (worker.number < nr_wanted_) worker.start_cv.notify_one();
}

bool Pool::stop() {
    Lock lock = lock_awake(mutex_);
    if (state_ == State::idle) return false;

    wait_awake(lock, control_cv_, [this] { return state_ == State::running; });
    state_ = State::stopping;
    wait_awake(lock, control_cv_, [this] { return nr_running_ == 0; });
    nr_finished_ = 0;
    state_ = State::idle;
    task_ = nullptr;
    on_all_done_ = nullptr;
    return true;
}

void Pool::operator()(Worker& worker) {
    while (wait_for_round_(worker)) {
        run_task_(worker);
        if (worker.number == 0)
            static_cast<void>(wait_awake(patience, [&] { return is_wanted_(worker); }));
    }
}

bool Pool::is_wanted_(const Worker& worker) const {
    const bool is_round = state_ == State::starting || state_ == State::running;
    return quit_ || (is_round && worker.number < nr_wanted_ && worker.last_call != nr_calls_);
}

// False if there will be no more rounds.
bool Pool::wait_for_round_(Worker& worker) {
    Lock lock = lock_awake(mutex_);
    worker.start_cv.wait(lock, [&] { return is_wanted_(worker); });
    if (quit_) return false;
    worker.last_call = nr_calls_;
    if (std::exchange(worker.is_finished, false)) --nr_finished_;
    ++nr_running_;
    if (state_ == State::running || nr_running_ + nr_finished_ != nr_wanted_) return true;
    state_ = State::running;
    lock.unlock();
    control_cv_.notify_one();
    return true;
}

void Pool::run_task_(Worker& worker) {
    bool again = false;
    do
        again = task_();
    while (again && state_ != State::stopping);

    Lock lock = lock_awake(mutex_);
    if (!again && nr_running_ == 1 && nr_finished_ + 1 == nr_wanted_) {
        // Still counted as running, so that `stop` waits and leaves the function in place.
        lock.unlock();
        on_all_done_();
        lock.lock();
    }
    if (!again) {
        ++nr_finished_;
        worker.is_finished = true;
    }
    const bool is_last = --nr_running_ == 0;
    lock.unlock();
    if (is_last) control_cv_.notify_one();
}

}  // namespace vela::thread
