#pragma once

#include <chrono>
#include <mutex>
#include <thread>

namespace vela::thread {

/// Asks again and again, for at most that long, whether what is waited for is there.
///
/// To fall asleep and be woken takes 25 us, so that it pays to wait awake for what is nearer. Other
/// threads get the processor in between.
template <typename Condition>
[[nodiscard]] bool wait_awake(std::chrono::microseconds at_most, Condition condition) {
    using Clock = std::chrono::steady_clock;
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

}  // namespace vela::thread
