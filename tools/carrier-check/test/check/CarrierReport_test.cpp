#include <gtest/gtest.h>

#include <check/CarrierReport.hpp>

namespace check {
namespace {

TEST(CarrierReport, FramesAreToldAsRuns) {
    EXPECT_EQ(runs_of({}), "");
    EXPECT_EQ(runs_of({7}), "7");
    EXPECT_EQ(runs_of({0, 1, 2, 5, 7, 8}), "0-2 5 7-8");
}

TEST(CarrierReport, SpreadIsSmallestMedianAndLargest) {
    const auto none = spread_of(std::vector<unsigned>{});
    EXPECT_EQ(none.to, 0u);
    const auto odd = spread_of(std::vector<unsigned>{9, 3, 5});
    EXPECT_EQ((std::array{odd.from, odd.median, odd.to}), (std::array{3u, 5u, 9u}));
    const auto even = spread_of(std::vector<std::size_t>{4, 2, 1, 3});
    EXPECT_EQ(even.median, 2u) << "the lower one of two";
}

TEST(CarrierReport, GathersInstructionsByWhatTheySay) {
    vela::carrier::Block block;
    block.nr_bitlines = 5;
    block.instructions = {{30, {30}}, {71, {255}}};
    CarrierReport report;
    report.add(0, block);
    block.instructions = {{30, {30}}};
    report.add(3, block);
    EXPECT_EQ(report.nr_sound, 2u);
    EXPECT_EQ(report.bitlines, (std::vector<unsigned>{5, 5}));
    EXPECT_EQ((report.instructions.at({30, {30}})), (std::vector<std::size_t>{0, 3}));
    EXPECT_EQ((report.instructions.at({71, {255}})), (std::vector<std::size_t>{0}));
}

TEST(CarrierReport, EveryInstructionHasAName) {
    for (const unsigned opcode :
         {30u, 64u, 65u, 70u, 71u, 80u, 100u, 110u, 128u, 129u, 130u, 131u, 132u, 133u})
        EXPECT_STRNE(name_of(opcode), "Unknown");
    EXPECT_STREQ(name_of(66), "Unknown");
}

}  // namespace
}  // namespace check
