#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vela/thread/Pool.hpp>

namespace vela::thread {
namespace {

constexpr unsigned long counts[] = {1, 2, 3, 16};

TEST(Pool, KeepsItsNumberOfThreads) {
    EXPECT_EQ(Pool(3).nr_threads(), 3u);
    EXPECT_EQ(Pool(0).nr_threads(), 0u);
}

TEST(Pool, StopWithoutARoundReturnsAtOnce) {
    Pool pool(2);
    EXPECT_FALSE(pool.stop());
    ASSERT_TRUE(pool.start([] { return false; }));
    EXPECT_TRUE(pool.stop());
    EXPECT_FALSE(pool.stop());
}

TEST(Pool, WithoutThreadsNothingRuns) {
    Pool pool(0);
    bool ran = false;
    EXPECT_FALSE(pool.start([&] { return ran = true; }));
    EXPECT_FALSE(pool.stop());
    EXPECT_FALSE(ran);
}

TEST(Pool, DestructionWhileIdleJoinsAllThreads) {
    for (const auto count : counts)
        Pool pool(count);
}

TEST(Pool, DestructionStopsARound) {
    std::atomic<int> inside = 0;
    {
        Pool pool(4);
        ASSERT_TRUE(pool.start([&] {
            ++inside;
            std::this_thread::yield();
            --inside;
            return true;
        }));
    }
    EXPECT_EQ(inside, 0);
}

TEST(Pool, ARoundThatRunsTakesNoOtherTask) {
    Pool pool(2);
    std::atomic<bool> second = false;
    ASSERT_TRUE(pool.start([] { return true; }));
    EXPECT_FALSE(pool.start([&] {
        second = true;
        return false;
    }));
    EXPECT_TRUE(pool.stop());
    EXPECT_FALSE(second);
}

TEST(Pool, TheTaskIsDroppedWhenTheRoundEnds) {
    Pool pool(2);
    const auto captured = std::make_shared<int>(0);
    ASSERT_TRUE(pool.start([captured] { return false; }));
    ASSERT_TRUE(pool.stop());
    EXPECT_EQ(captured.use_count(), 1);
}

// A thread that is done at once must not take up the same round again in place of a slow one.
TEST(Pool, ATaskThatReturnsFalseAtOnceRunsOncePerThreadAndRound) {
    for (const auto count : counts) {
        SCOPED_TRACE(count);
        Pool pool(count);
        for (int round = 0; round < 200; ++round) {
            std::mutex mutex;
            std::map<std::thread::id, int> calls;
            ASSERT_TRUE(pool.start([&] {
                const std::lock_guard lock(mutex);
                ++calls[std::this_thread::get_id()];
                return false;
            }));
            ASSERT_TRUE(pool.stop());
            ASSERT_EQ(calls.size(), count);
            for (const auto& [id, times] : calls)
                ASSERT_EQ(times, 1);
        }
    }
}

// Those that a round does not want sleep on; a round with all of them follows, which they join.
TEST(Pool, ARoundTakesNoMoreThreadsThanItWants) {
    Pool pool(4);
    EXPECT_FALSE(pool.start([] { return false; }, 0));
    EXPECT_FALSE(pool.start([] { return false; }, 5));
    for (int round = 0; round < 500; ++round) {
        const auto wanted = static_cast<unsigned long>(round % 4 + 1);
        std::mutex mutex;
        std::map<std::thread::id, int> calls;
        ASSERT_TRUE(pool.start(
            [&] {
                const std::lock_guard lock(mutex);
                return ++calls[std::this_thread::get_id()] < 3;
            },
            wanted));
        ASSERT_TRUE(pool.stop());
        ASSERT_EQ(calls.size(), wanted);
    }
}

// Their memory is near: what a learner has left there serves the next frame's.
TEST(Pool, RoundsThatWantFewerTakeTheSameThreadsEachTime) {
    Pool pool(8);
    std::mutex mutex;
    std::set<std::thread::id> seen;
    for (int round = 0; round < 100; ++round) {
        ASSERT_TRUE(pool.start(
            [&] {
                const std::lock_guard lock(mutex);
                seen.insert(std::this_thread::get_id());
                return false;
            },
            static_cast<unsigned long>(round % 3 + 1)));
        ASSERT_TRUE(pool.stop());
    }
    EXPECT_EQ(seen.size(), 3u);
}

TEST(Pool, DestructionStopsARoundOfFewerAndWakesTheRest) {
    for (int round = 0; round < 50; ++round) {
        std::atomic<int> inside = 0;
        {
            Pool pool(4);
            ASSERT_TRUE(pool.start(
                [&] {
                    ++inside;
                    std::this_thread::yield();
                    --inside;
                    return true;
                },
                2));
        }
        ASSERT_EQ(inside, 0);
    }
}

TEST(Pool, ThreadsThatStillGetTrueGoOnWhileOthersAreFinished) {
    Pool pool(4);
    std::atomic<int> finished = 0;
    std::atomic<int> calls_after = 0;
    ASSERT_TRUE(pool.start([&] {
        if (finished < 3 && finished++ < 3) return false;
        if (finished >= 3) ++calls_after;
        return true;
    }));
    while (calls_after < 10)
        std::this_thread::yield();
    EXPECT_TRUE(pool.stop());
}

// A round hands out each piece of work once, whatever the threads do; 10,000 rounds in all.
TEST(Pool, ManyRoundsDoAllTheirWork) {
    for (const auto count : counts) {
        SCOPED_TRACE(count);
        Pool pool(count);
        for (int round = 0; round < 2500; ++round) {
            std::atomic<int> left = round % 20;
            std::atomic<int> done = 0;
            std::atomic<unsigned long> idle = 0;
            ASSERT_TRUE(pool.start([&] {
                if (left.fetch_sub(1) > 0) return ++done > 0;
                ++idle;
                return false;
            }));
            while (idle < count)
                std::this_thread::yield();
            ASSERT_TRUE(pool.stop());
            ASSERT_EQ(done, round % 20);
            ASSERT_EQ(idle, count);
        }
    }
}

TEST(Pool, StopComesBetweenTwoCallsOfATaskThatNeverEnds) {
    Pool pool(3);
    for (int round = 0; round < 100; ++round) {
        std::atomic<int> inside = 0;
        ASSERT_TRUE(pool.start([&] {
            ++inside;
            --inside;
            return true;
        }));
        ASSERT_TRUE(pool.stop());
        ASSERT_EQ(inside, 0);
    }
}

TEST(Pool, AgainWithoutARoundDoesNothing) {
    Pool pool(2);
    EXPECT_FALSE(pool.again());
    ASSERT_TRUE(pool.start([] { return false; }));
    EXPECT_TRUE(pool.again());
    EXPECT_TRUE(pool.stop());
    EXPECT_FALSE(pool.again());
    EXPECT_FALSE(Pool(0).again());
}

/// False if that has not come about after some seconds.
template <typename Condition>
bool comes_about(Condition condition) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition() && std::chrono::steady_clock::now() < until)
        std::this_thread::yield();
    return condition();
}

TEST(Pool, AgainHasEachThreadOfTheRoundTakeUpTheTaskOnceMore) {
    for (const auto count : counts)
        for (unsigned long wanted = 1; wanted <= count; ++wanted) {
            std::atomic<unsigned long> nr_calls = 0;
            Pool pool(count);
            ASSERT_TRUE(pool.start(
                [&] {
                    ++nr_calls;
                    return false;
                },
                wanted));
            for (unsigned long round = 1; round <= 50; ++round) {
                ASSERT_TRUE(comes_about([&] { return nr_calls >= round * wanted; }));
                ASSERT_EQ(nr_calls, round * wanted);
                ASSERT_TRUE(pool.again());
            }
            ASSERT_TRUE(pool.stop());
            ASSERT_LE(nr_calls, 51 * wanted);
        }
}

// It comes up whenever it will: while threads sleep, wait awake, work, or are about to leave.
TEST(Pool, AgainSeesToWhatHasComeUpSince) {
    for (const auto count : counts) {
        std::atomic<int> left = 0;
        std::atomic<int> nr_done = 0;
        Pool pool(count);
        ASSERT_TRUE(pool.start([&] {
            for (int seen = left; seen > 0;)
                if (left.compare_exchange_weak(seen, seen - 1)) ++nr_done;
            return false;
        }));
        for (int i = 1; i <= 3000; ++i) {
            ++left;
            ASSERT_TRUE(pool.again());
            const bool is_awaited = i % 3 != 0;  // or else the next one comes at once
            ASSERT_TRUE(!is_awaited || comes_about([&] { return nr_done == i; })) << i;
        }
        ASSERT_TRUE(comes_about([&] { return nr_done == 3000; }));
        ASSERT_TRUE(pool.stop());
    }
}

TEST(Pool, AgainThatNobodyHasFollowedYetEndsWithItsRound) {
    std::atomic<int> nr_calls = 0;
    Pool pool(3);
    for (int round = 0; round < 500; ++round) {
        const auto wanted = static_cast<unsigned long>(round % 3 + 1);
        std::mutex mutex;
        std::set<std::thread::id> seen;
        ASSERT_TRUE(pool.start(
            [&] {
                const std::lock_guard lock(mutex);
                seen.insert(std::this_thread::get_id());
                return false;
            },
            wanted));
        for (int i = 0; i < round % 8; ++i) {
            ASSERT_TRUE(pool.again());
            if (i % 2 == 0) std::this_thread::yield();
        }
        ASSERT_TRUE(pool.stop());
        ASSERT_EQ(seen.size(), wanted);

        nr_calls = 0;
        ASSERT_TRUE(pool.start([&] {
            ++nr_calls;
            return false;
        }));
        ASSERT_TRUE(pool.stop());
        ASSERT_EQ(nr_calls, 3) << "each thread once, since nobody called for more";
    }
}

TEST(Pool, AgainDoesNotCutShortWhoIsAtWork) {
    for (const auto count : counts) {
        std::atomic<unsigned long> nr_begun = 0, nr_ended = 0;
        Pool pool(count);
        ASSERT_TRUE(pool.start([&] {
            if (nr_begun++ < 1000) return true;
            ++nr_ended;
            return false;
        }));
        while (nr_begun < 1000)
            ASSERT_TRUE(pool.again());
        ASSERT_TRUE(comes_about([&] { return nr_ended >= count; }));
        ASSERT_TRUE(pool.stop());
        EXPECT_EQ(nr_begun, 1000 + nr_ended);
    }
}

}  // namespace
}  // namespace vela::thread
