#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <numeric>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>
#include <vela/thread/PingPong.hpp>
#include <vela/thread/Pool.hpp>

namespace vela::thread {
namespace {

using Ints = PingPong<int>;

static_assert(!std::is_copy_constructible_v<Ints::Push> &&
              !std::is_copy_constructible_v<Ints::Pop>);
static_assert(std::is_nothrow_move_constructible_v<Ints::Pop>);

[[nodiscard]] bool push(Ints& pingpong, int value) {
    auto slot = pingpong.start_filling();
    if (slot) *slot = value;
    return static_cast<bool>(slot);
}

// The next value, or -1 without a slot.
int drain(Ints& pingpong) {
    const auto slot = pingpong.start_draining();
    return slot ? *slot : -1;
}

// Long enough for a thread that does not wait to come through.
void give_time() {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

TEST(PingPong, PushAndDrainInTurnNeverBlockOnOneThread) {
    Ints pingpong;
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(push(pingpong, i));
        ASSERT_EQ(drain(pingpong), i);
    }
}

TEST(PingPong, TwoValuesAreUnderWayAndComeInOrder) {
    Ints pingpong;
    ASSERT_TRUE(push(pingpong, 1));
    ASSERT_TRUE(push(pingpong, 2));
    EXPECT_EQ(drain(pingpong), 1);
    EXPECT_EQ(drain(pingpong), 2);
}

TEST(PingPong, TheThirdPushWaitsForADrain) {
    Ints pingpong;
    ASSERT_TRUE(push(pingpong, 1));
    ASSERT_TRUE(push(pingpong, 2));
    std::atomic<bool> through = false;
    std::thread pusher([&] {
        EXPECT_TRUE(push(pingpong, 3));
        through = true;
    });
    give_time();
    EXPECT_FALSE(through);
    EXPECT_EQ(drain(pingpong), 1);
    pusher.join();
    EXPECT_TRUE(through);
    EXPECT_EQ(drain(pingpong), 2);
    EXPECT_EQ(drain(pingpong), 3);
}

TEST(PingPong, ADrainWaitsForAValue) {
    Ints pingpong;
    std::atomic<int> got = 0;
    std::thread drainer([&] { got = drain(pingpong); });
    give_time();
    EXPECT_EQ(got, 0);
    ASSERT_TRUE(push(pingpong, 7));
    drainer.join();
    EXPECT_EQ(got, 7);
}

TEST(PingPong, TheSlotIsGivenBackByEndOrAtTheEndOfLife) {
    Ints pingpong;
    auto first = pingpong.start_filling();
    *first = 1;
    first.end();
    EXPECT_FALSE(first);
    first.end();  // gives nothing back a second time

    auto moved_from = pingpong.start_filling();
    *moved_from = 2;
    {
        const auto moved_to = std::move(moved_from);
        EXPECT_TRUE(moved_to);
    }
    EXPECT_EQ(drain(pingpong), 1);
    EXPECT_EQ(drain(pingpong), 2);
}

TEST(PingPong, ValuesAreReachedInPlace) {
    PingPong<std::vector<int>> pingpong;
    {
        const auto slot = pingpong.start_filling();
        slot->assign(3, 5);
    }
    const auto slot = pingpong.start_draining();
    ASSERT_TRUE(slot);
    EXPECT_EQ(*slot, std::vector<int>(3, 5));
}

TEST(PingPong, WhileClosingAWaitingDrainerGetsTheLastValueAndLaterOnesNone) {
    Ints pingpong;
    ASSERT_TRUE(push(pingpong, 1));
    std::atomic<bool> closed = false;
    std::thread closer([&] {
        EXPECT_TRUE(pingpong.close());
        closed = true;
    });
    give_time();
    EXPECT_FALSE(closed);
    EXPECT_EQ(drain(pingpong), 1);
    closer.join();
    EXPECT_EQ(drain(pingpong), -1);
    EXPECT_EQ(drain(pingpong), -1);
}

TEST(PingPong, BothValuesUnderWayAreDrainedBeforeCloseReturns) {
    Ints pingpong;
    ASSERT_TRUE(push(pingpong, 1));
    ASSERT_TRUE(push(pingpong, 2));
    std::thread closer([&] { EXPECT_TRUE(pingpong.close()); });
    EXPECT_EQ(drain(pingpong), 1);
    EXPECT_EQ(drain(pingpong), 2);
    closer.join();
}

TEST(PingPong, CloseSendsWaitingDrainersHome) {
    Ints pingpong;
    std::vector<std::thread> drainers;
    for (int i = 0; i < 4; ++i)
        drainers.emplace_back([&] { EXPECT_EQ(drain(pingpong), -1); });
    EXPECT_TRUE(pingpong.close());
    for (auto& drainer : drainers)
        drainer.join();
}

TEST(PingPong, CloseSendsAWaitingPushHome) {
    Ints pingpong;
    int pushed = 0;
    std::thread pusher([&] {
        while (push(pingpong, pushed))
            ++pushed;
    });
    std::thread closer([&] {
        give_time();
        EXPECT_TRUE(pingpong.close());
    });
    give_time();
    int drained = 0;
    while (drain(pingpong) == drained)
        ++drained;
    pusher.join();
    closer.join();
    EXPECT_LE(drained, pushed);
    EXPECT_GE(drained, pushed - 1) << "more than what was being filled when the drainer went home";
}

TEST(PingPong, OnceClosedThereIsNoSlot) {
    Ints pingpong;
    EXPECT_TRUE(pingpong.close());
    EXPECT_EQ(drain(pingpong), -1);
    EXPECT_FALSE(push(pingpong, 1));
}

TEST(PingPong, IsClosedAndOpenedOnce) {
    Ints pingpong;
    EXPECT_FALSE(pingpong.open());
    EXPECT_TRUE(pingpong.close());
    EXPECT_FALSE(pingpong.close());
    EXPECT_TRUE(pingpong.open());
    EXPECT_FALSE(pingpong.open());
}

TEST(PingPong, WorksAgainAfterItWasReopened) {
    Ints pingpong;
    ASSERT_TRUE(push(pingpong, 1));
    EXPECT_EQ(drain(pingpong), 1);
    ASSERT_TRUE(pingpong.close());
    {
        const auto no_slot = pingpong.start_filling();
        ASSERT_TRUE(pingpong.open());
        ASSERT_FALSE(no_slot);  // its end must not count as a push
    }
    ASSERT_TRUE(push(pingpong, 2));
    EXPECT_EQ(drain(pingpong), 2);
}

// The drainers have been told that nothing comes any more, while somebody still fills.
TEST(PingPong, APushThatEndsAfterTheDrainersWentHomeIsDropped) {
    Ints pingpong;
    auto slot = pingpong.start_filling();
    ASSERT_TRUE(slot);
    std::thread closer([&] { EXPECT_TRUE(pingpong.close()); });
    give_time();
    EXPECT_EQ(drain(pingpong), -1);
    *slot = 1;
    slot.end();
    closer.join();
    EXPECT_EQ(drain(pingpong), -1);
}

TEST(PingPong, ManyDrainersGetEachValueOnce) {
    constexpr int nr_values = 2000;
    PingPong<std::shared_ptr<int>> pingpong;
    std::mutex mutex;
    std::vector<int> got;
    std::vector<std::thread> drainers;
    for (int i = 0; i < 8; ++i)
        drainers.emplace_back([&] {
            while (auto slot = pingpong.start_draining()) {
                const auto value = std::move(*slot);
                slot.end();
                const std::lock_guard lock(mutex);
                got.push_back(*value);
            }
        });
    for (int i = 0; i < nr_values; ++i) {
        auto slot = pingpong.start_filling();
        ASSERT_TRUE(slot);
        *slot = std::make_shared<int>(i);
    }
    EXPECT_TRUE(pingpong.close());
    for (auto& drainer : drainers)
        drainer.join();

    std::vector<int> all(nr_values);
    std::iota(all.begin(), all.end(), 0);
    std::ranges::sort(got);
    EXPECT_EQ(got, all);
}

// A round as the encoder runs it: feed, close, stop.
TEST(PingPong, FeedsThePoolRoundAfterRound) {
    Pool pool(4);
    for (int round = 0; round < 200; ++round) {
        Ints pingpong;
        std::atomic<int> sum = 0;
        ASSERT_TRUE(pool.start([&] {
            const auto slot = pingpong.start_draining();
            if (slot) sum += *slot;
            return static_cast<bool>(slot);
        }));
        for (int i = 1; i <= round % 8; ++i)
            ASSERT_TRUE(push(pingpong, i));
        ASSERT_TRUE(pingpong.close());
        ASSERT_TRUE(pool.stop());
        ASSERT_EQ(sum, (round % 8) * (round % 8 + 1) / 2);
    }
}

TEST(PingPong, ManyThreadsMayFill) {
    Ints pingpong;
    std::vector<std::thread> pushers;
    for (int i = 0; i < 4; ++i)
        pushers.emplace_back([&] {
            for (int k = 0; k < 250; ++k)
                EXPECT_TRUE(push(pingpong, 1));
        });
    int sum = 0;
    for (int k = 0; k < 1000; ++k)
        sum += drain(pingpong);
    for (auto& pusher : pushers)
        pusher.join();
    EXPECT_EQ(sum, 1000);
    EXPECT_TRUE(pingpong.close());
}

}  // namespace
}  // namespace vela::thread
