#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace vela::thread {

/// How long to wait awake for what is mostly near: twice as long as it takes to fall asleep and be
/// woken.
constexpr std::chrono::microseconds patience(50);

namespace details {

/// Leaves the core to its other thread for a moment, where it has two.
inline void pause() {
#ifdef __x86_64__
    __builtin_ia32_pause();
#endif
}

}  // namespace details

/// Asks again and again, for at most that long, whether what is waited for is there.
///
/// To fall asleep and be woken takes 25 us, so that it pays to wait awake for what is nearer.  The
/// processor is not given away meanwhile: on a busy machine it would come back after milliseconds,
/// whereas a thread that has slept is let in at once.
template <typename Condition>
[[nodiscard]] bool wait_awake(std::chrono::microseconds at_most, Condition condition) {
    using Clock = std::chrono::steady_clock;
    if (condition()) return true;
    const auto until = Clock::now() + at_most;
    do
        for (int i = 0; i < 20; ++i) {
            if (condition()) return true;
            details::pause();
        }
    while (Clock::now() < until);
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
