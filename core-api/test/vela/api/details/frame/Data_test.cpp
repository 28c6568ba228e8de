#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <thread>
#include <utility>
#include <vela/api/details/frame/Data.hpp>

namespace vela::api::details::frame {
namespace {

using Ints = Data<int>;

TEST(Data, OfSizeZeroHasNoBuffer) {
    for (Ints data : {Ints(), Ints(0)}) {
        EXPECT_EQ(data.size(), 0u);
        EXPECT_EQ(data.begin(), nullptr);
        EXPECT_EQ(data.data(), nullptr);
    }
}

TEST(Data, StartsAsZeros) {
    const Ints data(100);
    EXPECT_EQ(data.size(), 100u);
    EXPECT_TRUE(std::all_of(data.data(), data.data() + 100, [](int v) { return v == 0; }));
}

// A wrapped size would be small, and what is written to it somebody else's.
TEST(Data, OfASizeThatNothingCanHoldThrows) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t size : {most, most - 1, most - 5, most - 20, most / 4, most / 8})
        EXPECT_THROW(Ints{size}, std::bad_alloc) << size;
}

TEST(Data, WriteAccessTwiceGivesTheSameBuffer) {
    Ints data(4);
    int* const first = data.begin();
    EXPECT_EQ(data.begin(), first);
    EXPECT_EQ(data.data(), first);
}

TEST(Data, CopiesShareUntilOneIsWrittenTo) {
    Ints a(2);
    a.begin()[0] = 1;
    Ints b = a;
    const Ints c = b;
    EXPECT_EQ(b.data(), a.data());

    b.begin()[0] = 2;
    EXPECT_EQ(a.data()[0], 1);
    EXPECT_EQ(b.data()[0], 2);
    EXPECT_EQ(b.data()[1], 0);
    EXPECT_EQ(c.data(), a.data());
}

TEST(Data, BegunAnewItKeepsOnlyABufferOfItsOwn) {
    Ints a(2);
    a.begin()[0] = 1;
    const int* const buffer = a.data();
    EXPECT_EQ(a.begin_anew(), buffer);

    const Ints b = a;
    std::fill_n(a.begin_anew(), 2, 7);
    EXPECT_NE(a.data(), b.data());
    EXPECT_EQ(a.data()[0], 7);
    EXPECT_EQ(b.data()[0], 1);
    EXPECT_EQ(Ints(0).begin_anew(), nullptr);
}

TEST(Data, TheLastOwnerWritesInPlace) {
    Ints a(2);
    const int* const buffer = a.data();
    { const Ints b = a; }
    EXPECT_EQ(a.begin(), buffer);
}

TEST(Data, WhatWasMovedFromIsEmpty) {
    Ints a(2);
    const int* const buffer = a.data();
    Ints b = std::move(a);
    EXPECT_EQ(b.begin(), buffer);
    EXPECT_EQ(a.size(), 0u);
    EXPECT_EQ(a.begin(), nullptr);
    a = std::move(b);
    EXPECT_EQ(a.begin(), buffer);
    EXPECT_EQ(b.size(), 0u);
}

// The writer may take over the buffer as soon as the reader has let go of it.
TEST(Data, TwoThreadsMayHoldCopiesOfOneBuffer) {
    for (int round = 0; round < 200; ++round) {
        Ints written(64);
        std::fill_n(written.begin(), 64, round);
        std::thread reader([copy = written, round]() mutable {
            const Ints own = std::exchange(copy, Ints());
            EXPECT_EQ(std::count(own.data(), own.data() + 64, round), 64);
        });
        for (int i = 0; i < 64; ++i)
            written.begin()[i] = -1;
        EXPECT_EQ(std::count(written.data(), written.data() + 64, -1), 64);
        reader.join();
    }
}

}  // namespace
}  // namespace vela::api::details::frame
