#include <gtest/gtest.h>

#include <array>
#include <vector>
#include <vela/Range.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::segment {
namespace {

template <std::size_t N>
std::vector<std::array<int, N>> elements_of(std::vector<int>& values) {
    using At = Iterator<N, int>;
    const At stop(values.data() + values.size());
    std::vector<std::array<int, N>> elements;
    for (At at(values.data()); at != stop; ++at)
        elements.push_back(*at);
    return elements;
}

TEST(Iterator, WalksInStepsOfItsDimension) {
    std::vector<int> values{1, 2, 3, 4, 5, 6};
    EXPECT_EQ(elements_of<1>(values),
              (std::vector<std::array<int, 1>>{{1}, {2}, {3}, {4}, {5}, {6}}));
    EXPECT_EQ(elements_of<2>(values), (std::vector<std::array<int, 2>>{{1, 2}, {3, 4}, {5, 6}}));
    EXPECT_EQ((Iterator<2, int>::dimension), 2u);
}

TEST(Iterator, DistancesCountElements) {
    std::vector<int> values{1, 2, 3, 4, 5, 6};
    const Iterator<2, int> first(values.data());
    const auto third = first + 2;
    EXPECT_EQ(*third, (std::array<int, 2>{5, 6}));
    EXPECT_EQ(third - first, 2);
    EXPECT_EQ(first - third, -2);
    EXPECT_EQ(third + -2, first);
    EXPECT_EQ(third.data(), values.data() + 4);
    EXPECT_EQ(Range(first, third).size(), 2u);
}

TEST(Iterator, AssignOverwritesOneElement) {
    std::vector<int> values{1, 2, 3, 4, 5, 6};
    (Iterator<2, int>(values.data()) + 1).assign({30, 40});
    EXPECT_EQ(values, (std::vector<int>{1, 2, 30, 40, 5, 6}));
}

TEST(Iterator, DefaultOnesAreEqual) {
    EXPECT_EQ((Iterator<1, int>()), (Iterator<1, int>(nullptr)));
}

}  // namespace
}  // namespace vela::segment
