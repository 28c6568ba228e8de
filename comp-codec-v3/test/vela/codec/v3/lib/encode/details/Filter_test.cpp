#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/details/Filter.hpp>

namespace vela::codec::v3::encode::details {
namespace {

struct Case {
    const char* name;
    std::vector<Filter::Point> points;
    std::vector<std::uint32_t> kept;
    std::vector<std::uint32_t> skipped;  // of 3 to 12
};

class FilterTable : public testing::TestWithParam<Case> {};

TEST_P(FilterTable, KeepsTheBracketAndSkipsWhatLiesOutside) {
    Filter filter;
    for (const auto& point : GetParam().points)
        filter.update(point.nr_bitlines, point.quality);
    std::vector<std::uint32_t> kept;
    for (const auto& point : filter.points())
        kept.push_back(point.nr_bitlines);
    EXPECT_EQ(kept, GetParam().kept);
    std::vector<std::uint32_t> skipped;
    for (std::uint32_t b = 3; b <= 12; ++b)
        if (filter(b)) skipped.push_back(b);
    EXPECT_EQ(skipped, GetParam().skipped);
}

INSTANTIATE_TEST_SUITE_P(
    Points, FilterTable,
    testing::Values(
        Case{"None", {}, {}, {}}, Case{"One", {{5, 1}}, {5}, {}},
        Case{"SecondBetter", {{9, 2}, {5, 1}}, {5, 9}, {3, 4}},
        Case{"FirstBetter", {{5, 2}, {9, 1}}, {5, 9}, {10, 11, 12}},
        Case{"EqualPairSkipsAbove", {{5, 1}, {9, 1}}, {5, 9}, {10, 11, 12}},
        Case{"PeakInTheMiddle", {{3, 1}, {5, 2}, {9, 1}}, {3, 5, 9}, {10, 11, 12}},
        Case{"PeakAtTheStart", {{4, 3}, {5, 2}, {9, 1}}, {4, 5}, {6, 7, 8, 9, 10, 11, 12}},
        Case{"PeakAtTheEnd", {{4, 1}, {5, 2}, {9, 3}}, {5, 9}, {3, 4}},
        Case{"TieTakesTheLowest", {{4, 1}, {6, 2}, {8, 2}}, {4, 6, 8}, {3, 9, 10, 11, 12}},
        Case{"Narrowed", {{3, 1}, {5, 2}, {9, 1}, {7, 3}}, {5, 7, 9}, {3, 4, 10, 11, 12}},
        Case{"ARetryIsAPointOfItsOwn", {{7, 1}, {7, 2}}, {7, 7}, {3, 4, 5, 6}}),
    [](const auto& of) { return std::string(of.param.name); });

}  // namespace
}  // namespace vela::codec::v3::encode::details
