#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>
#include <vela/gvm/fast/Owners.hpp>

namespace vela::gvm::fast {
namespace {

std::vector<Position> owners_of(const Owners& owners, Position partner) {
    std::vector<Position> list;
    owners.for_each(partner, [&](Position x) { list.push_back(x); });
    std::sort(list.begin(), list.end());
    return list;
}

TEST(FastOwners, AreNobodyAtFirstAndAfterAReset) {
    Owners owners;
    for (int round = 0; round < 2; ++round) {
        owners.reset(3);
        for (Position c = 0; c < 3; ++c)
            EXPECT_TRUE(owners_of(owners, c).empty());
        owners.join(2, 0);
    }
}

TEST(FastOwners, WhoJoinsAnotherPartnerLeavesTheOldOne) {
    Owners owners;
    owners.reset(4);
    owners.join(1, 0);
    owners.join(2, 0);
    owners.join(3, 0);
    owners.join(2, 1);
    EXPECT_EQ(owners_of(owners, 0), (std::vector<Position>{1, 3}));
    EXPECT_EQ(owners_of(owners, 1), (std::vector<Position>{2}));
    owners.leave(2);
    owners.leave(2);
    EXPECT_TRUE(owners_of(owners, 1).empty());
}

TEST(FastOwners, AreTwoAtLeastWhereNobodyCounts) {
    constexpr Position size = 9;
    Owners owners;
    owners.reset(size);
    for (Position nr = 0; nr < 5; ++nr) {
        std::vector<Position> visited;
        owners.for_each_and_nobody(3, [&](Position x) { visited.push_back(x); });
        std::sort(visited.begin(), visited.end());
        std::vector<Position> expected = owners_of(owners, 3);
        EXPECT_EQ(expected.size(), nr);
        expected.resize(std::max<std::size_t>(nr, 2), size);
        EXPECT_EQ(visited, expected);
        owners.join(4 + nr, 3);
    }
}

TEST(FastOwners, EqualAPlainListOfPartners) {
    constexpr Position size = 9;
    std::mt19937 engine(3);
    Owners owners;
    owners.reset(size);
    std::vector<Position> partner_of(size, no_partner);
    for (int round = 0; round < 5000; ++round) {
        const auto c = static_cast<Position>(engine() % size);
        partner_of[c] = engine() % 5 == 0 ? no_partner : static_cast<Position>(engine() % size);
        if (partner_of[c] == no_partner)
            owners.leave(c);
        else
            owners.join(c, partner_of[c]);
        for (Position partner = 0; partner < size; ++partner) {
            std::vector<Position> expected;
            for (Position x = 0; x < size; ++x)
                if (partner_of[x] == partner) expected.push_back(x);
            ASSERT_EQ(owners_of(owners, partner), expected);
        }
    }
}

}  // namespace
}  // namespace vela::gvm::fast
