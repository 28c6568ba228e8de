#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encoder/CandidateQueue.hpp>

namespace vela::codec::v3::encoder {
namespace {

using Counts = std::vector<std::uint32_t>;

void push(CandidateQueue& queue, const api::Channel& carrier, std::uint32_t b, std::uint32_t prev) {
    auto group = std::make_shared<encode::Group>();
    group->nr_bitlines = b;
    group->prev_bitlines = prev;
    group->frame.key = api::ChannelVariant(carrier);
    queue.push(carrier, group);
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
    for (std::uint32_t b = 3; b <= 12; ++b)
        push(queue, api::channel::Left, b, GetParam().prev);
    Counts order;
    EXPECT_TRUE(queue.feed([&](const auto& group) {
        order.push_back(group->nr_bitlines);
        return true;
    }));
    EXPECT_EQ(order, GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(Previous, CandidateOrder,
                         testing::Values(Case{10, {10, 9, 11, 8, 12, 7, 6, 5, 4, 3}},
                                         Case{3, {3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
                                         Case{12, {12, 11, 10, 9, 8, 7, 6, 5, 4, 3}},
                                         Case{7, {7, 8, 6, 9, 5, 4, 10, 3, 11, 12}},
                                         Case{5, {5, 4, 6, 7, 3, 8, 9, 10, 11, 12}}));

TEST(CandidateQueue, CarriersTakeTurnsByAscendingId) {
    CandidateQueue queue;
    for (const std::uint32_t b : {3u, 4u, 5u})
        push(queue, api::channel::LFE, b, 3);
    for (const std::uint32_t b : {8u, 9u})
        push(queue, api::channel::Left, b, 9);
    push(queue, api::channel::Center, 7, 7);
    Counts order;
    EXPECT_TRUE(queue.feed([&](const auto& group) {
        order.push_back(group->frame.key.channel.id() * 100 + group->nr_bitlines);
        return true;
    }));
    EXPECT_EQ(order, (Counts{9, 207, 303, 8, 304, 305}));
}

TEST(CandidateQueue, StopsWhereItIsTold) {
    CandidateQueue queue;
    for (std::uint32_t b = 3; b <= 12; ++b)
        push(queue, api::channel::Left, b, 10);
    int count = 0;
    EXPECT_FALSE(queue.feed([&](const auto&) { return ++count < 3; }));
    EXPECT_EQ(count, 3);
    CandidateQueue empty;
    EXPECT_TRUE(empty.feed([](const auto&) { return false; }));
}

}  // namespace
}  // namespace vela::codec::v3::encoder
