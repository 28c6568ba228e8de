#include <chrono>
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
    const Lock lock(mutex_);
    if (nr_wanted == 0 || nr_wanted > nr_threads_ || state_ != State::idle) return false;

    task_ = std::move(task);
    on_all_done_ = [] {};
    ++round_;
    nr_wanted_ = nr_wanted;
    state_ = State::starting;
    for (Worker& worker : threads_)
        if (worker.number < nr_wanted) worker.start_cv.notify_one();
    return true;
}

bool Pool::stop() {
    Lock lock(mutex_);
    if (state_ == State::idle) return false;

    control_wait_(lock, [this] { return state_ == State::running; });
    state_ = State::stopping;
    control_wait_(lock, [this] { return nr_running_ == 0; });
    nr_finished_ = 0;
    state_ = State::idle;
    task_ = nullptr;
    on_all_done_ = nullptr;
    return true;
}

// What is waited for is mostly near.
template <typename Condition>
void Pool::control_wait_(Lock& lock, Condition condition) {
    lock.unlock();
    const bool is_there = wait_awake(std::chrono::microseconds(50), [&] {
        const Lock again(mutex_);
        return condition();
    });
    lock.lock();
    if (!is_there) control_cv_.wait(lock, condition);
}

void Pool::operator()(Worker& worker) {
    Lock lock(mutex_);
    while (wait_for_round_(lock, worker))
        run_task_(lock);
}

// False if there will be no more rounds.
bool Pool::wait_for_round_(Lock& lock, Worker& worker) {
    worker.start_cv.wait(lock, [&] {
        const bool wanted = worker.number < nr_wanted_ && worker.last_round != round_;
        return quit_ || (state_ == State::starting && wanted);
    });
    if (quit_) return false;
    worker.last_round = round_;
    ++nr_running_;
    if (nr_running_ + nr_finished_ == nr_wanted_) {
        state_ = State::running;
        control_cv_.notify_one();
    }
    return true;
}

void Pool::run_task_(Lock& lock) {
    bool again = true;
    while (again && state_ != State::stopping) {
        lock.unlock();
        again = task_();
        lock.lock();
    }
    if (!again && nr_running_ == 1 && nr_finished_ + 1 == nr_wanted_) {
        // Still counted as running, so that `stop` waits and leaves the function in place.
        lock.unlock();
        on_all_done_();
        lock.lock();
    }
    --nr_running_;
    if (!again) ++nr_finished_;
    if (nr_running_ == 0) control_cv_.notify_one();
}

}  // namespace vela::thread
