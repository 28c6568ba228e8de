#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vela/simd/Column.hpp>

namespace vela::simd {
namespace {

template <typename T>
bool begins_a_cache_line(const Column<T>& column) {
    return reinterpret_cast<std::uintptr_t>(column.data()) % 64 == 0;
}

TEST(Column, BeginsACacheLineHoweverItCameToItsLength) {
    for (std::size_t size = 1; size < 300; ++size) {
        Column<float> of_floats(size);
        Column<std::uint32_t> of_positions;
        for (std::uint32_t i = 0; i < size; ++i)
            of_positions.push_back(i);
        EXPECT_TRUE(begins_a_cache_line(of_floats));
        EXPECT_TRUE(begins_a_cache_line(of_positions));
        of_floats.assign(2 * size, 1);
        EXPECT_TRUE(begins_a_cache_line(of_floats));
    }
}

TEST(Column, IsCopiedAndMovedLikeAnyVector) {
    Column<float> column{1, 2, 3};
    const Column<float> copy = column;
    const float* const data = column.data();
    const Column<float> moved = std::move(column);
    EXPECT_EQ(moved, copy);
    EXPECT_EQ(moved.data(), data);
    EXPECT_NE(copy.data(), data);
    EXPECT_TRUE(begins_a_cache_line(copy));
}

}  // namespace
}  // namespace vela::simd
