#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <vector>
#include <vela/gvm/fast/Merges.hpp>

namespace vela::gvm::fast {
namespace {

constexpr double any_cost = std::numeric_limits<double>::infinity();

/// Clusters of one delta each, at positions in the order given; partners are searched.
struct Line {
    Line(std::initializer_list<double> values) : Line(std::vector<double>(values)) {}
    explicit Line(const std::vector<double>& values) {
        storage.reset(values.size(), 100);
        by_size.reset(values.size(), 100);
        merges.reset(values.size(), sieve::slack(100, 1, 1000));
        Position c = 0;
        for (const double value : values) {
            storage.store(c, Cluster<double, 1>::alone({value}));
            by_size.grow(c, 1);
            merges.start(c, c == 0 ? no_partner : 0, c == 0 ? 0 : any_cost / 2);
            if (c != 0) merges.search(c);
            ++c;
        }
    }

    void insert(Position c, double value) {
        const auto delta = Cluster<double, 1>::alone({value});
        storage.merge(c, delta, storage[c].united_share(delta));
        by_size.grow(c, storage[c].count);
    }

    Storage<double, 1> storage;
    BySize by_size;
    Merges<double, 1> merges{storage, by_size};
};

TEST(FastMerges, PartnersStandAtLowerPositions) {
    const Line line{10, 100, 11, 99};
    EXPECT_EQ(line.merges.partner(1), 0u);
    EXPECT_EQ(line.merges.partner(2), 0u);
    EXPECT_EQ(line.merges.partner(3), 1u);
}

TEST(FastMerges, OfEqualPartnersTheLowestPositionIsTaken) {
    EXPECT_EQ((Line{10, 14, 12}.merges.partner(2)), 0u);
    EXPECT_EQ((Line{14, 10, 12}.merges.partner(2)), 0u);
}

TEST(FastMerges, OnlyMergesBelowTheCostAskedForCount) {
    Line line{10, 100, 12};  // 12 with 10 costs 2
    EXPECT_EQ(line.merges.cheapest_below(2), no_partner);
    EXPECT_EQ(line.merges.cheapest_below(2.5), 2u);
    EXPECT_LE(line.merges.bound(), 2);
}

TEST(FastMerges, OfEqualMergesPositionOneAndThenTheLargestIsTaken) {
    Line line{10, 12, 100, 102};
    EXPECT_EQ(line.merges.cheapest_below(any_cost), 1u);
    Line other{10, 50, 12, 100, 102};
    EXPECT_EQ(other.merges.cheapest_below(any_cost), 2u);
    other.by_size.grow(4, 1);
    other.by_size.grow(2, 1);  // now behind position 4
    EXPECT_EQ(other.merges.cheapest_below(any_cost), 4u);
}

TEST(FastMerges, AnInsertRenewsTheCostsOfBothSides) {
    Line line{10, 100, 12};
    line.insert(0, 8);  // two deltas around 9: 12 costs 2 / 3 * 9
    line.merges.after_insert(0, false);
    EXPECT_EQ(line.merges.cheapest_below(6), no_partner);
    EXPECT_EQ(line.merges.cheapest_below(6.1), 2u);
    line.insert(2, 12);
    line.merges.after_insert(2, false);
    EXPECT_EQ(line.merges.cheapest_below(9), no_partner);
    EXPECT_EQ(line.merges.cheapest_below(9.1), 2u);
}

TEST(FastMerges, AnInsertRenewsAllOwnersHoweverMany) {
    const std::vector<double> distances{800, -400, 200, -100, 50};
    for (std::size_t nr = 0; nr <= distances.size(); ++nr) {
        std::vector<double> values{0, 1000};
        for (std::size_t i = 0; i < nr; ++i)
            values.push_back(1000 + distances[i]);
        Line line(values);
        line.insert(1, 1000);
        line.merges.after_insert(1, false);
        for (std::size_t i = nr; i-- > 0;) {
            const auto c = static_cast<Position>(2 + i);
            const double cost = distances[i] * distances[i] * 2 / 3;
            EXPECT_EQ(line.merges.partner(c), 1u);
            EXPECT_EQ(line.merges.cheapest_below(cost * 0.99), no_partner);
            EXPECT_EQ(line.merges.cheapest_below(cost * 1.01), c);
            line.storage.erase(c);
            line.merges.drop(c);
        }
    }
}

TEST(FastMerges, OnlyAChoiceTakesANewPartner) {
    for (const bool choose : {false, true}) {
        Line line{10, 30, 18};
        EXPECT_EQ(line.merges.partner(2), 0u);
        line.insert(1, 12);  // now at 21
        line.merges.after_insert(1, choose);
        EXPECT_EQ(line.merges.partner(2), choose ? 1u : 0u);
    }
}

TEST(FastMerges, WhatNobodyAskedForStaysBehindTheTruth) {
    for (const bool asked : {false, true}) {
        Line line{0, 50, 51, 90};
        ASSERT_EQ(line.merges.partner(2), 1u);
        // 50 absorbs 51, and 88 stands at position 2; 90 learns of it, 88 is marked only.
        line.storage.merge(1, line.storage[2], line.storage[1].united_share(line.storage[2]));
        line.by_size.grow(1, 2);
        line.storage.store(2, Cluster<double, 1>::alone({2}));
        line.by_size.shrink_to_one(2);
        line.merges.after_merge(1, 2);
        EXPECT_EQ(line.merges.partner(2), 1u);  // 0 is nearer by far
        if (asked) line.merges.renew();
        EXPECT_EQ(line.merges.partner(2), asked ? 0u : 1u);
    }
}

// As above, but the next delta lies on the first cluster, before anybody asks for a merge.
TEST(FastMerges, AHitLeavesItToOthersWhatTheMergeBeforeHasTaught) {
    Line line{0, 50, 51, 90};
    line.storage.merge(1, line.storage[2], line.storage[1].united_share(line.storage[2]));
    line.by_size.grow(1, 2);
    line.storage.store(2, Cluster<double, 1>::alone({2}));
    line.by_size.shrink_to_one(2);
    line.merges.after_merge(1, 2);
    line.merges.renew_before(0);
    line.insert(0, 0);
    line.merges.after_insert(0, false);

    EXPECT_EQ(line.merges.partner(3), 2u) << "the nearest before, and it was not searched again";
    EXPECT_EQ(line.merges.cheapest_below(1568), no_partner);
    EXPECT_EQ(line.merges.cheapest_below(1569), 2u);  // with 50.5 twice: 48.5 * 48.5 * 2 / 3
}

// Who knows what a search would give saves it; but it holds from when the merge is asked for only.
TEST(FastMerges, APartnerThatIsKnownIsTakenWhenItWouldBeSearched) {
    for (const Position known : {no_partner, Position{0}}) {
        for (const bool asked : {false, true}) {
            Line line{0, 50, 51, 90};
            line.storage.merge(1, line.storage[2], line.storage[1].united_share(line.storage[2]));
            line.by_size.grow(1, 2);
            line.storage.store(2, Cluster<double, 1>::alone({2}));
            line.by_size.shrink_to_one(2);
            line.merges.after_merge(1, 2, known);
            if (asked)
                line.merges.renew();
            else
                line.merges.renew_before(0);
            EXPECT_EQ(line.merges.partner(2), asked ? 0u : 1u);
            EXPECT_EQ(line.merges.partner(3), asked ? 1u : 2u);
            if (asked) {
                EXPECT_EQ(line.merges.cheapest_below(any_cost), 2u);
                EXPECT_EQ(line.merges.bound(), 2) << "of 0 with 2";
            }
        }
    }
}

// The two ways round differ in the last bits where deltas far apart have a mean near 0.
TEST(FastMerges, APartnerThatIsKnownCostsToTheBitWhatASearchWouldFind) {
    double costs[2];
    for (const bool known : {false, true}) {
        Line line{1, 800, 801, 950};
        for (const double value : {26, 49, -159, 62})
            line.insert(0, value);
        line.storage.merge(1, line.storage[2], line.storage[1].united_share(line.storage[2]));
        line.by_size.grow(1, 2);
        line.storage.store(2, Cluster<double, 1>::alone({25}));
        line.by_size.shrink_to_one(2);
        line.merges.after_merge(1, 2, known ? 0 : no_partner);
        line.merges.renew();
        EXPECT_EQ(line.merges.cheapest_below(any_cost), 2u);
        costs[known] = line.merges.bound();

        double other_way_round;
        line.storage[0].merge_delta(other_way_round, line.storage[2]);
        EXPECT_NE(costs[known], other_way_round);
    }
    EXPECT_EQ(costs[true], costs[false]);
}

TEST(FastMerges, TheLastClusterIsForgotten) {
    Line line{10, 100, 12};
    line.storage.erase(2);
    line.merges.drop(2);
    EXPECT_EQ(line.merges.cheapest_below(any_cost), 1u);
}

}  // namespace
}  // namespace vela::gvm::fast
