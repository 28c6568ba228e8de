#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <support/ErrandHelpers.hpp>
#include <thread>
#include <vector>
#include <vela/thread/Errands.hpp>

namespace vela::thread {
namespace {

TEST(Errands, WithoutAnyThereIsNothingToRunOrToWaitFor) {
    Errands errands;
    EXPECT_FALSE(errands.run_one());
    errands.finish();
}

TEST(Errands, TheOldestGoesFirst) {
    Errands errands;
    std::vector<int> done;
    for (int i = 0; i < 3; ++i)
        errands.post([&done, i] { done.push_back(i); });
    EXPECT_TRUE(errands.run_one());
    EXPECT_EQ(done, std::vector{0});
    errands.finish();
    EXPECT_EQ(done, (std::vector{0, 1, 2}));
    EXPECT_FALSE(errands.run_one());
}

TEST(Errands, ManyAtOnceKeepTheirOrderBehindThoseThatWait) {
    Errands errands;
    std::vector<int> done;
    const auto add = [&done](int i) { return [&done, i] { done.push_back(i); }; };
    errands.post(add(0));
    errands.post(std::vector<Errands::Errand>{});
    errands.post(std::vector<Errands::Errand>{add(1), add(2)});
    errands.post(add(3));
    errands.finish();
    EXPECT_EQ(done, (std::vector{0, 1, 2, 3}));
}

TEST(Errands, FinishWaitsForWhatAnotherThreadIsAt) {
    Errands errands;
    std::atomic<bool> is_begun = false;
    std::atomic<bool> is_done = false;
    errands.post([&] {
        is_begun = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        is_done = true;
    });
    std::thread helper([&] { EXPECT_TRUE(errands.run_one()); });
    while (!is_begun)
        std::this_thread::yield();
    errands.finish();
    EXPECT_TRUE(is_done);
    helper.join();
}

// An errand may find that there is more to do, whoever is at it.
TEST(Errands, WhatAnErrandPostsIsFinishedToo) {
    for (const bool is_helped : {false, true}) {
        Errands errands;
        std::atomic<bool> is_begun = false;
        bool is_done = false;
        errands.post([&] {
            is_begun = true;
            if (is_helped) std::this_thread::sleep_for(std::chrono::milliseconds(20));
            errands.post([&] { is_done = true; });
        });
        std::thread helper([&] {
            if (is_helped) errands.run_one();
        });
        while (is_helped && !is_begun)
            std::this_thread::yield();
        errands.finish();
        EXPECT_TRUE(is_done);
        helper.join();
    }
}

TEST(Errands, EachRunsOnceHoweverManyHelp) {
    Errands errands;
    const testing_support::ErrandHelpers helpers(errands, 3);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::atomic<int>> times(20);
        std::vector<Errands::Errand> together;
        for (auto& runs : times)
            together.emplace_back([&runs] { ++runs; });
        if (round % 2 == 0)
            for (const auto& errand : together)
                errands.post(errand);
        else
            errands.post(together);
        errands.finish();
        for (const auto& runs : times)
            EXPECT_EQ(runs, 1);
    }
}

}  // namespace
}  // namespace vela::thread
