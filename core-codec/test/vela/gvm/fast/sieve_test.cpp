#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>
#include <vela/gvm/fast/Storage.hpp>
#include <vela/gvm/fast/sieve_sets.hpp>
#include <vela/simd/InstructionSet.hpp>

namespace vela::gvm::fast::sieve {
namespace {

template <std::size_t N>
const Functions<N>& functions_of(const std::string& set) {
    if constexpr (N == 1)
        return set == "avx512" ? avx512::one : set == "avx2" ? avx2::one : sse2::one;
    else
        return set == "avx512" ? avx512::two : set == "avx2" ? avx2::two : sse2::two;
}

using List = std::vector<std::uint32_t>;

/// Clusters of random deltas around an offset: with a large one the means differ in the last bits.
template <std::size_t N>
struct Clusters {
    static constexpr int largest_count = 9;

    Clusters(std::mt19937& random, std::size_t nr, int limit, int offset_of_all)
        : engine(random), magnitude(limit), offset(offset_of_all), size(nr) {
        storage.reset(size, size * largest_count);
        for (std::size_t i = 0; i < size; ++i) {
            Cluster<double, N> cluster = alone();
            for (auto n = engine() % largest_count; n > 0; --n)
                cluster.merge(alone());
            storage.store(static_cast<Position>(i), cluster);
        }
        slack = sieve::slack(size * largest_count, N,
                             static_cast<double>(magnitude) + std::abs(offset));
    }

    Cluster<double, N> alone() {
        typename Cluster<double, N>::Vector delta;
        for (double& x : delta)
            x = static_cast<double>(offset) - magnitude +
                static_cast<double>(engine() % (2u * static_cast<unsigned>(magnitude) + 1));
        return Cluster<double, N>::alone(delta);
    }

    std::mt19937& engine;
    int magnitude, offset;
    std::size_t size;
    Storage<double, N> storage;
    float slack;
};

/// All positions whose cost is the lowest, or exactly 0.
List winners(const std::vector<double>& costs) {
    const double lowest = *std::min_element(costs.begin(), costs.end());
    List list;
    for (std::uint32_t i = 0; i < costs.size(); ++i)
        if (costs[i] == lowest || costs[i] == 0) list.push_back(i);
    return list;
}

void expect_contains(const List& list, const List& wanted) {
    EXPECT_TRUE(std::includes(list.begin(), list.end(), wanted.begin(), wanted.end()));
}

class InstructionSets : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!simd::machine_has(GetParam())) GTEST_SKIP() << "this machine has no " << GetParam();
    }

    template <std::size_t N>
    void expect_winners_of_adding(Clusters<N>& clusters) {
        const auto& functions = functions_of<N>(GetParam());
        const auto shadows = clusters.storage.shadows();
        Cluster<double, N> deltas[batch];
        float values[batch][N];
        Batch<N> found{};
        for (std::size_t i = 0; i < batch; ++i) {
            deltas[i] = clusters.alone();
            std::copy(deltas[i].sum.begin(), deltas[i].sum.end(), values[i]);
            for (std::size_t axis = 0; axis < N; ++axis)
                found.delta[axis][i] = values[i][axis];
        }
        functions.nearest(found, shadows, clusters.size, clusters.slack);
        for (std::size_t i = 0; i < batch; ++i) {
            std::vector<double> costs(clusters.size);
            for (std::uint32_t c = 0; c < clusters.size; ++c)
                clusters.storage[c].merge_delta(costs[c], deltas[i]);
            const List wanted = winners(costs);
            List list(clusters.size + padding);
            list.resize(functions.all_nearest(list.data(), shadows, clusters.size, values[i],
                                              clusters.slack));
            expect_contains(list, wanted);
            if (found.position[i] == several) continue;
            EXPECT_EQ(List{found.position[i]}, wanted);
            EXPECT_GE(found.limit[i], costs[wanted[0]]);
            ++nr_alone_;
        }
    }

    template <std::size_t N>
    void expect_winners_of_merging(const Clusters<N>& clusters) {
        if (clusters.size < 2) return;
        const auto& functions = functions_of<N>(GetParam());
        const auto shadows = clusters.storage.shadows();
        const auto at = static_cast<std::uint32_t>(1 + clusters.engine() % (clusters.size - 1));
        std::vector<double> costs(at);
        for (std::uint32_t c = 0; c < at; ++c)
            clusters.storage[at].merge_delta(costs[c], clusters.storage[c]);
        const List wanted = winners(costs);
        const Found found = functions.partner(shadows, at, clusters.slack);
        List list(clusters.size + padding);
        list.resize(functions.all_partners(list.data(), shadows, at, found.limit));
        expect_contains(list, wanted);
        if (found.position == several) return;
        EXPECT_EQ(List{found.position}, wanted);
        ++nr_alone_;
    }

    template <std::size_t N>
    static Shadow<N> shadow_of(const Columns<N>& columns, std::uint32_t at) {
        Shadow<N> shadow{{}, columns.inverse[at], at};
        for (std::size_t axis = 0; axis < N; ++axis)
            shadow.mean[axis] = columns.mean[axis][at];
        return shadow;
    }

    template <std::size_t N>
    void expect_all_cheaper(const Clusters<N>& clusters) {
        const auto shadows = clusters.storage.shadows();
        const auto a = static_cast<std::uint32_t>(clusters.engine() % clusters.size);
        const auto b = static_cast<std::uint32_t>(clusters.engine() % clusters.size);
        const std::uint32_t first = a + 1;
        std::vector<float> costs(clusters.size + padding);
        List partners(clusters.size + padding);
        List wanted;
        for (std::uint32_t c = first; c < clusters.size; ++c) {
            double with_a, with_b, with_other;
            clusters.storage[c].merge_delta(with_a, clusters.storage[a]);
            clusters.storage[c].merge_delta(with_b, clusters.storage[b]);
            const auto other = static_cast<std::uint32_t>(clusters.engine() % clusters.size);
            clusters.storage[c].merge_delta(with_other, clusters.storage[other]);
            costs[c] = static_cast<float>(with_other);
            partners[c] = other;
            if (other != a && other != b && std::min(with_a, with_b) < with_other)
                wanted.push_back(c);
        }
        List list(clusters.size + padding);
        list.resize(functions_of<N>(GetParam())
                        .cheaper(list.data(), shadows, {costs.data(), partners.data()}, first,
                                 clusters.size, shadow_of(shadows, a), shadow_of(shadows, b),
                                 clusters.slack));
        expect_contains(list, wanted);
        for (const std::uint32_t c : list)
            EXPECT_TRUE(partners[c] != a && partners[c] != b) << "who have one of them already";
        EXPECT_TRUE(list.empty() || (list.front() >= first && list.back() < clusters.size));
    }

    template <std::size_t N>
    void expect_all(std::mt19937& engine, int magnitude, int offset) {
        Clusters<N> clusters(engine, 1 + engine() % 70, magnitude, offset);
        expect_winners_of_adding(clusters);
        expect_winners_of_merging(clusters);
        expect_all_cheaper(clusters);
    }

    std::size_t nr_alone_ = 0;
};

// What the sieve drops must neither win nor tie, whatever rounding makes of the exact costs.
TEST_P(InstructionSets, NeverDropAWinner) {
    std::mt19937 engine(5);
    for (const int magnitude : {1, 3, 20, 1000, 1 << 15, 1 << 23, 1 << 30})
        for (const int offset : {0, 1000, 1 << 25, 1000000007})
            for (int round = 0; round < 60 && !HasFailure(); ++round) {
                SCOPED_TRACE(testing::Message() << magnitude << " around " << offset);
                expect_all<1>(engine, magnitude, offset);
                expect_all<2>(engine, magnitude, offset);
            }
}

// The numbers of positions must have room beside the estimates.
TEST_P(InstructionSets, NameTheLastOfAsManyClustersAsThereMayBe) {
    const auto& functions = functions_of<1>(GetParam());
    Storage<double, 1> storage;
    storage.reset(max_clusters, max_clusters);
    for (std::uint32_t c = 0; c < max_clusters; ++c)
        storage.store(c, Cluster<double, 1>::alone({10.0 * c}));
    const float few = slack(max_clusters, 1, 10.0 * max_clusters);
    Batch<1> found{};
    const std::uint32_t wanted[batch] = {0, 4097, max_clusters - 2, max_clusters - 1};
    for (std::size_t i = 0; i < batch; ++i)
        found.delta[0][i] = static_cast<float>(10 * wanted[i] + 2);
    functions.nearest(found, storage.shadows(), max_clusters, few);
    for (std::size_t i = 0; i < batch; ++i)
        EXPECT_EQ(found.position[i], wanted[i]);
    EXPECT_EQ(functions.partner(storage.shadows(), max_clusters - 1, few).position,
              max_clusters - 2);
}

// Else everything would be computed exactly, and the sieve be for nothing.
TEST_P(InstructionSets, MostlyNameOneCluster) {
    std::mt19937 engine(6);
    for (int round = 0; round < 100; ++round) {
        Clusters<1> clusters(engine, 150, 1 << 15, 0);
        expect_winners_of_adding(clusters);
    }
    EXPECT_GT(nr_alone_, 100 * batch * 3 / 4);
}

TEST_P(InstructionSets, FindWhereTheLowestValueStands) {
    std::mt19937 engine(7);
    const auto& functions = functions_of<1>(GetParam());
    for (int round = 0; round < 20000; ++round) {
        const std::size_t size = 1 + engine() % 70;
        std::vector<float> values(size + padding, std::numeric_limits<float>::infinity());
        for (std::size_t i = 0; i < size; ++i)
            values[i] = static_cast<float>(static_cast<int>(engine() % 90) - 2);
        const float lowest = *std::min_element(values.begin(), values.end());
        List wanted;
        for (std::uint32_t i = 0; i < size; ++i)
            if (values[i] == lowest) wanted.push_back(i);
        List list(size + padding);
        list.resize(functions.lowest(list.data(), values.data(), size));
        ASSERT_EQ(list, wanted);
    }
}

// Beyond 2^53 sums are not exact, and everything has to be looked at.
TEST_P(InstructionSets, DropNothingWhereTheBoundDoesNotHold) {
    EXPECT_EQ(slack(std::size_t{1} << 23, 1, 0x1p30), std::numeric_limits<float>::infinity());
    std::mt19937 engine(8);
    Clusters<1> clusters(engine, 30, 1000000, 0);
    const float delta[1] = {17};
    List list(clusters.size + padding);
    EXPECT_EQ(functions_of<1>(GetParam())
                  .all_nearest(list.data(), clusters.storage.shadows(), clusters.size, delta,
                               std::numeric_limits<float>::infinity()),
              30u);
}

INSTANTIATE_TEST_SUITE_P(FastSieve, InstructionSets, testing::Values("sse2", "avx2", "avx512"),
                         [](const auto& of) { return std::string(of.param); });

}  // namespace
}  // namespace vela::gvm::fast::sieve
