#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>
#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>

namespace vela::codec::v3::encoder {
namespace {

using Counts = std::vector<std::uint32_t>;
using First = CandidateQueue::First;

struct Range {
    std::uint32_t min, max;
};

void push(CandidateQueue& queue, const api::Channel& carrier, const Range& counts,
          std::uint32_t prev, std::size_t nr_channels = 2, std::int64_t frame = 0) {
    const auto draft = std::make_shared<encode::Group>();
    draft->span = {frame * 1024, (frame + 1) * 1024};
    draft->origs.resize(nr_channels);
    draft->prev_bitlines = prev;
    draft->frame.key = api::ChannelVariant(carrier);
    queue.push(draft, counts.min, counts.max);
}

/// 100 times the carrier's id, and the count of bit-lines.
std::uint32_t name_of(const CandidateQueue::Candidate& candidate) {
    return candidate.draft().frame.key.channel.id() * 100 + candidate.nr_bitlines();
}

/// Each is done with before the next is asked for.
Counts all_of(CandidateQueue& queue, First first = First::turn) {
    Counts order;
    while (const auto candidate = queue.pop(first))
        order.push_back(name_of(*candidate));
    return order;
}

/// What is handed out while nothing is done with.
std::vector<CandidateQueue::Candidate> all_at_once(CandidateQueue& queue) {
    std::vector<CandidateQueue::Candidate> at_work;
    while (auto candidate = queue.pop())
        at_work.push_back(std::move(*candidate));
    return at_work;
}

struct Case {
    std::uint32_t prev;
    Counts order;
};

class CandidateOrder : public testing::TestWithParam<Case> {};

// Of equal distances the heap decides, and with it what the filter drops and what is written:
// another library's heap must not change carriers unnoticed.
TEST_P(CandidateOrder, IsThatOfTheStandardBinaryHeap) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 12}, GetParam().prev);
    EXPECT_EQ(all_of(queue), GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(Previous, CandidateOrder,
                         testing::Values(Case{10, {10, 9, 11, 8, 12, 7, 6, 5, 4, 3}},
                                         Case{3, {3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
                                         Case{12, {12, 11, 10, 9, 8, 7, 6, 5, 4, 3}},
                                         Case{7, {7, 8, 6, 9, 5, 4, 10, 3, 11, 12}},
                                         Case{5, {5, 4, 6, 7, 3, 8, 9, 10, 11, 12}}));

TEST(CandidateQueue, CarriersTakeTurnsByAscendingId) {
    CandidateQueue queue;
    push(queue, api::channel::LFE, {3, 5}, 3);
    push(queue, api::channel::Left, {8, 9}, 9);
    push(queue, api::channel::Center, {7, 7}, 7);
    EXPECT_EQ(all_of(queue), (Counts{9, 207, 303, 8, 304, 305}));
}

TEST(CandidateQueue, GivesNothingWhenAllAreHandedOut) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 3}, 3);
    EXPECT_TRUE(queue.pop());
    EXPECT_FALSE(queue.pop());
    EXPECT_FALSE(queue.pop());
}

// Nearly all frames need a carrier's first three; what comes after them mostly cannot win.
TEST(CandidateQueue, AFourthOfACarrierWaitsUntilNoneIsAtWork) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 7}, 3);
    push(queue, api::channel::Right, {8, 9}, 8);
    auto at_work = all_at_once(queue);
    Counts order;
    for (const auto& candidate : at_work)
        order.push_back(name_of(candidate));
    EXPECT_EQ(order, (Counts{3, 108, 4, 109, 5}));

    at_work.erase(at_work.begin());
    EXPECT_FALSE(queue.pop()) << "two of the left one are still at work";
    at_work.clear();
    const auto fourth = queue.pop();
    ASSERT_TRUE(fourth);
    EXPECT_EQ(name_of(*fourth), 6u);
    EXPECT_FALSE(queue.pop()) << "from now on one at a time";
}

TEST(CandidateQueue, ACarrierThatWaitsDoesNotKeepOthersFromTheirTurn) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 6}, 3);
    push(queue, api::channel::Right, {3, 6}, 3);
    std::optional<CandidateQueue::Candidate> left;
    for (const std::uint32_t name : {3, 103, 4, 104, 5, 105}) {
        auto candidate = queue.pop();
        ASSERT_TRUE(candidate);
        EXPECT_EQ(name_of(*candidate), name);
        if (name == 5) left = std::move(candidate);
    }
    EXPECT_EQ(all_of(queue), (Counts{106}));
    left.reset();
    EXPECT_EQ(all_of(queue), (Counts{6}));
}

TEST(CandidateQueue, TheLastOfACarrierToEndIsTold) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 3}, 3);
    push(queue, api::channel::Right, {3, 5}, 3);
    auto left = queue.pop();
    std::vector<CandidateQueue::Candidate> right;
    for (int i = 0; i < 2; ++i)
        right.push_back(*queue.pop());
    EXPECT_FALSE(right[1].end()) << "one is at work, one is left";
    EXPECT_TRUE(left->end());
    auto third = queue.pop();
    EXPECT_FALSE(third->end()) << "it was handed out last, but the first is still at work";
    EXPECT_TRUE(right[0].end());
}

// Whoever ended the last one begins the next frame, while other carriers are still at this one.
TEST(CandidateQueue, ACarrierGoesOnToItsNextFrameWhateverOthersAreAt) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 5}, 5);
    push(queue, api::channel::Right, {3, 4}, 3);
    Counts order;
    while (auto candidate = queue.pop()) {
        order.push_back(name_of(*candidate));
        const auto nr_pushed = queue.nr_pushed();
        if (candidate->end() && order.back() == 104) {
            push(queue, api::channel::Right, {3, 5}, 5, 2, 1);
            EXPECT_NE(queue.nr_pushed(), nr_pushed);
        } else {
            EXPECT_EQ(queue.nr_pushed(), nr_pushed);
        }
    }
    EXPECT_EQ(order, (Counts{5, 103, 4, 104, 105, 104, 3, 103}));
}

// Where it is its own all the same, what takes long comes first.
TEST(CandidateQueue, GivesTheCarriersFirstThatAreAskedForFirst) {
    for (const auto& [first, order] : {std::pair(First::turn, Counts{3, 203, 303, 4, 204, 304}),
                                       std::pair(First::own, Counts{3, 303, 4, 304, 203, 204})}) {
        CandidateQueue queue;
        push(queue, api::channel::Left, {3, 4}, 3);
        push(queue, api::channel::Center, {3, 4}, 3, 1);
        push(queue, api::channel::LFE, {3, 4}, 3, 3);
        EXPECT_EQ(all_of(queue, first), order);
    }
}

// So that the frame that somebody waits for ends.
TEST(CandidateQueue, OfItsOwnCarriersGivesTheOneFirstThatIsFarthestBehind) {
    CandidateQueue queue;
    push(queue, api::channel::Left, {3, 3}, 3, 2, 5);
    push(queue, api::channel::Right, {3, 3}, 3, 2, 4);
    push(queue, api::channel::Center, {3, 3}, 3, 1, 3);
    EXPECT_EQ(all_of(queue, First::own), (Counts{203, 103, 3}));
}

/// What the call gives on another thread.
template <typename Call>
auto elsewhere(Call call) {
    decltype(call()) result{};
    std::thread([&] { result = call(); }).join();
    return result;
}

/// A frame of three carriers with a mix.
void start_frame(CandidateQueue& queue, std::int64_t frame = 0) {
    for (const auto& carrier :
         {api::channel::Left, api::channel::Right, api::channel::LeftSurround})
        push(queue, carrier, {3, 4}, 3, 2, frame);
}

// What its candidates need lies near it still.
TEST(CandidateQueueThreads, GetTheCarriersFirstThatTheyBeganInTheFrameBefore) {
    CandidateQueue queue;
    start_frame(queue);
    EXPECT_EQ(name_of(*queue.pop(First::own)), 3u);
    EXPECT_EQ(elsewhere([&] { return name_of(*queue.pop(First::own)); }), 103u);
    EXPECT_EQ(all_of(queue, First::own), (Counts{403, 4, 404, 104})) << "the other's at last";

    start_frame(queue);
    EXPECT_EQ(all_of(queue, First::own), (Counts{3, 403, 4, 404, 103, 104}));
    start_frame(queue);
    EXPECT_EQ(all_of(queue, First::own), (Counts{3, 103, 403, 4, 104, 404}))
        << "begun, so it is its";
}

TEST(CandidateQueueThreads, GetTheirOwnAheadOfOthersThatAreFartherBehind) {
    CandidateQueue queue;
    start_frame(queue);
    elsewhere([&] { return name_of(*queue.pop(First::own)); });
    EXPECT_EQ(all_of(queue, First::own), (Counts{103, 403, 104, 404, 4}));
    push(queue, api::channel::Left, {3, 3}, 3, 2, 1);
    push(queue, api::channel::Right, {3, 3}, 3, 2, 2);
    EXPECT_EQ(all_of(queue, First::own), (Counts{103, 3}));
}

TEST(CandidateQueueThreads, InTurnItIsNobodysCarrier) {
    CandidateQueue queue;
    start_frame(queue);
    elsewhere([&] { return all_of(queue, First::turn); });
    start_frame(queue);
    EXPECT_EQ(all_of(queue, First::turn), (Counts{3, 103, 403, 4, 104, 404}));
}

// Each carrier's frames follow one another while others' are handed out.
TEST(CandidateQueueThreads, MayBeginTheNextFrameOfWhatTheyEnded) {
    constexpr unsigned nr_frames = 50;
    CandidateQueue queue;
    std::array<std::atomic<unsigned>, api::channel::id::count> nr_ended{};
    std::atomic<unsigned> count = 0;
    for (const auto& carrier : api::channel::all())
        push(queue, carrier, {3, 7}, 5);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            while (auto candidate = queue.pop(First::own)) {
                const api::Channel carrier = candidate->draft().frame.key.channel;
                ++count;
                if (candidate->end() && ++nr_ended[carrier.id()] < nr_frames)
                    push(queue, carrier, {3, 7}, 5, 2, nr_ended[carrier.id()]);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(count, 5 * nr_frames * api::channel::all().size());
    EXPECT_EQ(queue.nr_pushed(), nr_frames * api::channel::all().size());
}

TEST(CandidateQueueThreads, GiveEachOnceToWhoeverAsks) {
    CandidateQueue queue;
    for (const auto& carrier : api::channel::all())
        push(queue, carrier, {3, 12}, 7);
    std::atomic<unsigned> count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            while (const auto candidate = queue.pop()) {
                ++count;
                std::this_thread::yield();
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(count, 10 * api::channel::all().size());
}

}  // namespace
}  // namespace vela::codec::v3::encoder
