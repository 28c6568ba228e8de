#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vela/thread/awake.hpp>

namespace vela::thread {
namespace {

using std::chrono::microseconds;

TEST(WaitAwake, SaysWhetherItIsThereInTime) {
    int asked = 0;
    EXPECT_TRUE(wait_awake(microseconds(0), [&] { return ++asked == 1; })) << "asks first of all";
    EXPECT_TRUE(wait_awake(std::chrono::seconds(60), [&] { return ++asked == 1000; }));
    EXPECT_EQ(asked, 1000);
    EXPECT_FALSE(wait_awake(microseconds(100), [] { return false; }));
}

// Who comes to change the condition would fall asleep over it otherwise.
TEST(WaitAwake, LeavesTheMutexToOthersMeanwhile) {
    std::mutex mutex;
    std::condition_variable cv;
    bool was_free = false;
    std::unique_lock lock(mutex);
    wait_awake(lock, cv, [&] {
        std::thread([&] {
            const std::unique_lock other(mutex, std::try_to_lock);
            was_free = was_free || other.owns_lock();
        }).join();
        return true;
    });
    EXPECT_TRUE(was_free);
}

TEST(WaitAwake, SleepsForWhatIsNotNear) {
    for (const auto delay : {microseconds(0), 20 * patience, 200 * patience}) {
        std::mutex mutex;
        std::condition_variable cv;
        std::atomic<bool> is_there = false;
        std::thread other([&] {
            std::this_thread::sleep_for(delay);
            {
                const std::lock_guard lock(mutex);
                is_there = true;
            }
            cv.notify_one();
        });
        std::unique_lock lock(mutex);
        wait_awake(lock, cv, [&] { return is_there.load(); });
        EXPECT_TRUE(is_there);
        EXPECT_TRUE(lock.owns_lock());
        lock.unlock();
        other.join();
    }
}

TEST(LockAwake, LetsOneInAtATimeHoweverLongItStays) {
    std::mutex mutex;
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    const auto enter = [&] {
        for (int i = 0; i < 50; ++i) {
            const auto lock = lock_awake(mutex);
            most = std::max<int>(most, ++inside);
            // Now and then longer than anybody stays awake.
            if (i % 25 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            --inside;
        }
    };
    std::thread other(enter);
    enter();
    other.join();
    EXPECT_EQ(most, 1);
}

}  // namespace
}  // namespace vela::thread
