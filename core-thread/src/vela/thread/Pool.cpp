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
    ++round_;
    nr_wanted_ = nr_wanted;
    state_ = State::starting;
    lock.unlock();
    for (Worker& worker : threads_)
        if (worker.number < nr_wanted) worker.start_cv.notify_one();
    return true;
}

bool Pool::stop() {
    Lock lock = lock_awake(mutex_);
    if (state_ == State::idle) return false;

    wait_awake(lock, control_cv_, [this] { return state_ == State::running; });
    state_ = State::stopping;
    lock.unlock();
    run_errands_until_([this] { return nr_running_ == 0; });
    lock = lock_awake(mutex_);
    wait_awake(lock, control_cv_, [this] { return nr_running_ == 0; });
    nr_finished_ = 0;
    state_ = State::idle;
    task_ = nullptr;
    on_all_done_ = nullptr;
    return true;
}

void Pool::operator()(Worker& worker) {
    while (wait_for_round_(worker)) {
        run_task_();
        if (worker.number == 0) run_errands_(worker);
    }
}

bool Pool::is_wanted_(const Worker& worker) const {
    const bool is_in_round = worker.number < nr_wanted_ && worker.last_round != round_;
    return quit_ || (state_ == State::starting && is_in_round);
}

// Until it is wanted again, for a while at most; for longer only as long as there is work.
void Pool::run_errands_(const Worker& worker) {
    static_cast<void>(wait_awake(
        patience, [&] { return run_errands_until_([&] { return is_wanted_(worker); }); }));
}

// False if there is nothing left to do until then.
template <typename Condition>
bool Pool::run_errands_until_(Condition condition) {
    while (!condition())
        if (!errands_.run_one()) return false;
    return true;
}

// False if there will be no more rounds.
bool Pool::wait_for_round_(Worker& worker) {
    Lock lock = lock_awake(mutex_);
    worker.start_cv.wait(lock, [&] { return is_wanted_(worker); });
    if (quit_) return false;
    worker.last_round = round_;
    ++nr_running_;
    if (nr_running_ + nr_finished_ != nr_wanted_) return true;
    state_ = State::running;
    lock.unlock();
    control_cv_.notify_one();
    return true;
}

void Pool::run_task_() {
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
    if (!again) ++nr_finished_;
    const bool is_last = --nr_running_ == 0;
    lock.unlock();
    if (is_last) control_cv_.notify_one();
}

}  // namespace vela::thread
