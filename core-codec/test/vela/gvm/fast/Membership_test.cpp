#include <gtest/gtest.h>

#include <vector>
#include <vela/gvm/fast/Membership.hpp>

namespace vela::gvm::fast {
namespace {

using Ixs = std::vector<unsigned long>;

/// Five deltas in positions 0 1 0 2 1 of four.
Membership five_deltas() {
    Membership membership(5, 4);
    EXPECT_TRUE(membership.assign(0, 0));
    EXPECT_TRUE(membership.assign(1, 1));
    EXPECT_TRUE(membership.assign(2, 0));
    EXPECT_TRUE(membership.assign(3, 2));
    EXPECT_TRUE(membership.assign(4, 1));
    return membership;
}

Ixs ixs_of(const Membership& membership) {
    Ixs ixs(5);
    EXPECT_TRUE(membership.get_ixs(ixs));
    return ixs;
}

TEST(FastMembership, GivesThePositionOfEachDelta) {
    EXPECT_EQ(ixs_of(five_deltas()), (Ixs{0, 1, 0, 2, 1}));
}

TEST(FastMembership, AppendJoinsListsAndLeavesOneEmpty) {
    Membership membership = five_deltas();
    EXPECT_TRUE(membership.append(0, 1));
    EXPECT_EQ(ixs_of(membership), (Ixs{1, 1, 1, 2, 1}));
    EXPECT_TRUE(membership.append(0, 2));  // nothing left to move
    EXPECT_EQ(ixs_of(membership), (Ixs{1, 1, 1, 2, 1}));
    EXPECT_TRUE(membership.append(1, 3));  // into an empty list
    EXPECT_EQ(ixs_of(membership), (Ixs{3, 3, 3, 2, 3}));
}

TEST(FastMembership, DeltasCanFollowAfterAnAppend) {
    Membership membership(4, 2);
    EXPECT_TRUE(membership.assign(0, 0));
    EXPECT_TRUE(membership.assign(1, 1));
    EXPECT_TRUE(membership.append(1, 0));
    EXPECT_TRUE(membership.assign(2, 1));
    EXPECT_TRUE(membership.assign(3, 0));
    Ixs ixs(4);
    EXPECT_TRUE(membership.get_ixs(ixs));
    EXPECT_EQ(ixs, (Ixs{0, 0, 1, 0}));
}

TEST(FastMembership, RenameMovesAList) {
    Membership membership = five_deltas();
    EXPECT_TRUE(membership.rename(1, 3));
    EXPECT_EQ(ixs_of(membership), (Ixs{0, 3, 0, 2, 3}));
    EXPECT_TRUE(membership.rename(2, 1));
    EXPECT_EQ(ixs_of(membership), (Ixs{0, 3, 0, 1, 3}));
}

TEST(FastMembership, RenameToItselfDoesNothingEvenIfNotEmpty) {
    Membership membership = five_deltas();
    EXPECT_TRUE(membership.rename(1, 1));
    EXPECT_EQ(ixs_of(membership), (Ixs{0, 1, 0, 2, 1}));
}

TEST(FastMembership, RefusesWhatWouldLoseDeltasOrIsOutOfRange) {
    Membership membership = five_deltas();
    EXPECT_FALSE(membership.rename(1, 2));  // 2 holds a delta
    EXPECT_FALSE(membership.rename(4, 3));
    EXPECT_FALSE(membership.rename(1, 4));
    EXPECT_FALSE(membership.append(1, 1));  // would close a ring
    EXPECT_FALSE(membership.append(4, 1));
    EXPECT_FALSE(membership.append(1, 4));
    EXPECT_FALSE(membership.assign(5, 0));
    EXPECT_FALSE(membership.assign(0, 4));
    EXPECT_EQ(ixs_of(membership), (Ixs{0, 1, 0, 2, 1}));
    Ixs too_short(4);
    EXPECT_FALSE(membership.get_ixs(too_short));
}

}  // namespace
}  // namespace vela::gvm::fast
