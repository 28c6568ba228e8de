#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <support/ErrandHelpers.hpp>
#include <thread>
#include <vector>
#include <vela/thread/Chore.hpp>

namespace vela::thread {
namespace {

TEST(Chore, IsDoneByWhoeverRunsErrands) {
    Errands errands;
    int nr_done = 0;
    Chore chore(errands, [&] { ++nr_done; });
    chore.finish();
    EXPECT_EQ(nr_done, 0) << "nothing was due";
    chore.post();
    EXPECT_EQ(nr_done, 0);
    EXPECT_TRUE(errands.run_one());
    EXPECT_EQ(nr_done, 1);
    chore.finish();
    EXPECT_EQ(nr_done, 1);
}

TEST(Chore, IsDoneByItsOwnerIfNobodyHasBegun) {
    Errands errands;
    std::thread::id done_by;
    Chore chore(errands, [&] { done_by = std::this_thread::get_id(); });
    chore.post();
    chore.finish();
    EXPECT_EQ(done_by, std::this_thread::get_id());
}

// On a machine that is busy otherwise nobody ever has time.
TEST(Chore, IsDoneOnceAPostThoughErrandsComeLateAndTheseDoNotPileUp) {
    Errands errands;
    int nr_done = 0;
    Chore chore(errands, [&] { ++nr_done; });
    for (int i = 1; i <= 5; ++i) {
        chore.post();
        EXPECT_EQ(nr_done, i - 1) << "what was due before is done first";
    }
    EXPECT_TRUE(errands.run_one());
    EXPECT_EQ(nr_done, 5);
    EXPECT_FALSE(errands.run_one());

    chore.post();
    chore.finish();
    EXPECT_TRUE(errands.run_one()) << "with nothing to do";
    EXPECT_EQ(nr_done, 6);
    chore.post();
    EXPECT_TRUE(errands.run_one());
    EXPECT_EQ(nr_done, 7);
}

TEST(Chore, WorkThatThrowsIsOver) {
    Errands errands;
    Chore chore(errands, [] { throw std::runtime_error("cannot"); });
    chore.post();
    EXPECT_THROW(chore.finish(), std::runtime_error);
    chore.finish();
}

TEST(Chore, FinishWaitsForWhoeverIsAtIt) {
    Errands errands;
    std::atomic<bool> is_begun = false;
    bool is_done = false;
    Chore chore(errands, [&] {
        is_begun = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        is_done = true;
    });
    chore.post();
    std::thread helper([&] { EXPECT_TRUE(errands.run_one()); });
    while (!is_begun)
        std::this_thread::yield();
    chore.finish();
    EXPECT_TRUE(is_done);
    helper.join();
}

// To wait for all errands would be to wait for itself.
TEST(Chore, AnErrandMayPostAndFinishOne) {
    Errands errands;
    int nr_done = 0;
    Chore inner(errands, [&] { ++nr_done; });
    Chore outer(errands, [&] {
        inner.post();
        inner.finish();
        inner.post();
    });
    outer.post();
    errands.finish();
    EXPECT_EQ(nr_done, 2);
}

TEST(Chore, WhatIsDueIsDoneBeforeItGoes) {
    Errands errands;
    int nr_done = 0;
    auto chore = std::make_unique<Chore>(errands, [&] { ++nr_done; });
    chore->post();
    chore->finish();
    chore->post();
    chore.reset();
    EXPECT_EQ(nr_done, 2);
    EXPECT_FALSE(errands.run_one()) << "nobody comes to what is gone";
}

TEST(ChoreThreads, DoEachPostOnceInTurn) {
    Errands errands;
    const testing_support::ErrandHelpers helpers(errands, 3);
    int input = 0;
    std::vector<int> outputs;  // unguarded: one at a time has the chore
    Chore chore(errands, [&] { outputs.push_back(input); });
    for (int i = 0; i < 3000; ++i) {
        chore.finish();
        ASSERT_EQ(outputs.size(), static_cast<std::size_t>(i));
        input = i;
        chore.post();
    }
    chore.finish();
    for (int i = 0; i < 3000; ++i)
        EXPECT_EQ(outputs[static_cast<std::size_t>(i)], i);
}

}  // namespace
}  // namespace vela::thread
