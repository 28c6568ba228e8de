#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace vela::thread {

/// How long to wait awake for what is mostly near: twice as long as it takes to fall asleep and be
/// woken.
constexpr std::chrono::microseconds patience(50);

/// Asks again and again, for at most that long, whether what is waited for is there.
///
/// To fall asleep and be woken takes 25 us, so that it pays to wait awake for what is nearer. Other
/// threads get the processor in between.
template <typename Condition>
[[nodiscard]] bool wait_awake(std::chrono::microseconds at_most, Condition condition) {
    using Clock = std::chrono::steady_clock;
    for (int i = 0; i < 100; ++i)
        if (condition()) return true;
    const auto until = Clock::now() + at_most;
    while (Clock::now() < until) {
        std::this_thread::yield();
        if (condition()) return true;
    }
    return false;
}

/// Locks what others hold for a few microseconds at a time.
template <typename Mutex>
[[nodiscard]] std::unique_lock<Mutex> lock_awake(Mutex& mutex) {
    std::unique_lock lock(mutex, std::defer_lock);
    if (!wait_awake(std::chrono::microseconds(10), [&] { return lock.try_lock(); })) lock.lock();
    return lock;
}

/// Waits awake for what is mostly near, and then asleep.  The condition is changed under the mutex
/// of `lock`, but asked without, so that nobody who has to change it finds the mutex taken.
template <typename Condition>
void wait_awake(std::unique_lock<std::mutex>& lock, std::condition_variable& cv,
                Condition condition) {
    lock.unlock();
    static_cast<void>(wait_awake(patience, condition));
    lock = lock_awake(*lock.mutex());
    cv.wait(lock, condition);
}

}  // namespace vela::thread
