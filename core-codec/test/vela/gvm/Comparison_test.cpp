#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <vector>
#include <vela/fixed_width/bit_width.hpp>
#include <vela/gvm/create.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/optimal_cost.hpp>

namespace vela::gvm {
namespace {

template <std::size_t N>
using Pointer = std::shared_ptr<api::Learner<double, Iterator<N>>>;

template <std::size_t N>
Pointer<N> make(const std::string& name) {
    Pointer<N> learner;
    EXPECT_TRUE(create(learner, name));
    return learner;
}

struct Input {
    std::string name;
    std::vector<int> values;
};

std::vector<Input> inputs() {
    return {{"Uniform", uniform_values(120, 1000, 1)},
            {"LikeMusic", audio_like_values(160, 300, 2)},
            {"LikeQuietMusic", audio_like_values(160, 4, 3)},
            {"FewValues", uniform_values(120, 4, 4)},
            {"OneValue", std::vector<int>(40, -77)},
            {"Loud", uniform_values(100, 8388607, 5)},
            {"Short", uniform_values(6, 100, 6)}};
}

/// Cost from the deltas themselves, and with it sizes, indices and centers, which must all agree.
template <std::size_t N>
double checked_cost(const api::Learner<double, Iterator<N>>& learner,
                    const std::vector<int>& values) {
    std::vector<unsigned> sizes;
    std::vector<std::array<int, N>> centers;
    std::vector<unsigned long> ixs;
    EXPECT_TRUE(learner.get_sizes(sizes) && learner.get_centers(centers) && learner.get_ixs(ixs));
    EXPECT_EQ(ixs.size(), values.size() / N);
    EXPECT_TRUE(std::is_sorted(sizes.begin(), sizes.end(), std::greater<>()));

    std::vector<unsigned> counts(sizes.size());
    std::vector<std::array<long, N>> sums(sizes.size());
    for (std::size_t i = 0; i < ixs.size(); ++i) {
        ++counts.at(ixs[i]);
        for (std::size_t axis = 0; axis < N; ++axis)
            sums[ixs[i]][axis] += values[i * N + axis];
    }
    EXPECT_EQ(counts, sizes);
    double cost = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const unsigned long c = ixs[i / N];
        EXPECT_EQ(centers[c][i % N], sums[c][i % N] / static_cast<long>(counts[c]));
        const double mean = static_cast<double>(sums[c][i % N]) / counts[c];
        cost += (values[i] - mean) * (values[i] - mean);
    }
    return cost;
}

/// Sums of squares of that size come and go in the costs; what is left of them is rounding.
double rounding_of(const std::vector<int>& values) {
    const double squares = std::inner_product(values.begin(), values.end(), values.begin(), 0.0,
                                              std::plus<>(), std::multiplies<double>());
    return 1e-12 * squares;
}

template <std::size_t N>
void expect_consistent(const api::Learner<double, Iterator<N>>& learner,
                       const std::vector<int>& values, unsigned k) {
    EXPECT_LE(learner.nr_clusters(), k);
    std::vector<std::array<int, N>> centers;
    unsigned width = 0;
    ASSERT_TRUE(learner.get_centers(centers) && learner.get_center_width(width));
    EXPECT_EQ(width, fixed_width::bit_width(centers));
    EXPECT_NEAR(learner.cost(), checked_cost<N>(learner, values), rounding_of(values));
}

TEST(Learners, BeatNoOptimumAndReportWhatTheyDid) {
    for (const std::string name : {"ref", "fast"})
        for (Input& input : inputs())
            for (const unsigned k : {1, 2, 3, 5, 6, 20, 40}) {
                SCOPED_TRACE(testing::Message() << name << ' ' << input.name << " k " << k);
                const auto learner = make<1>(name);
                const bool refused = name == "ref" && k > input.values.size();
                ASSERT_EQ(learner->learn(k, range_of<1>(input.values)), !refused);
                if (refused) continue;
                expect_consistent<1>(*learner, input.values, k);
                EXPECT_GE(learner->cost(),
                          optimal_cost(input.values, k) - rounding_of(input.values));
            }
}

TEST(Learners, BeatNoOptimumOnTheWayDownEither) {
    for (const std::string name : {"ref", "fast"})
        for (Input& input : inputs()) {
            SCOPED_TRACE(name + ' ' + input.name);
            const auto learner = make<1>(name);
            ASSERT_TRUE(learner->learn(6, range_of<1>(input.values)));
            for (unsigned k = learner->nr_clusters(); k > 1; --k) {
                const double before = learner->cost();
                ASSERT_TRUE(learner->merge_two_clusters());
                expect_consistent<1>(*learner, input.values, k - 1);
                EXPECT_EQ(learner->nr_clusters(), k - 1);
                EXPECT_GE(learner->cost(), before - rounding_of(input.values));
                EXPECT_GE(learner->cost(),
                          optimal_cost(input.values, k - 1) - rounding_of(input.values));
            }
            EXPECT_NEAR(learner->cost(), optimal_cost(input.values, 1), rounding_of(input.values));
        }
}

TEST(Learners, ReportWhatTheyDidInTwoDimensions) {
    for (const std::string name : {"ref", "fast"})
        for (Input& input : inputs())
            for (const unsigned k : {1, 2, 3, 20}) {
                SCOPED_TRACE(testing::Message() << name << ' ' << input.name << " k " << k);
                const auto learner = make<2>(name);
                const bool refused = name == "ref" && k > input.values.size() / 2;
                ASSERT_EQ(learner->learn(k, range_of<2>(input.values)), !refused);
                if (refused) continue;
                expect_consistent<2>(*learner, input.values, k);
                while (learner->nr_clusters() > 1) {
                    const unsigned left = learner->nr_clusters() - 1;
                    ASSERT_TRUE(learner->merge_two_clusters());
                    expect_consistent<2>(*learner, input.values, left);
                }
            }
}

// With a place for every value nothing has to be paid.
TEST(Learners, FewValuesInManyClustersCostNothing) {
    std::vector<int> values = uniform_values(100, 4, 9);
    const auto learner = make<1>("fast");
    ASSERT_TRUE(learner->learn(9, range_of<1>(values)));
    EXPECT_EQ(learner->nr_clusters(), 9u);
    EXPECT_EQ(learner->cost(), 0.0);
    EXPECT_EQ(optimal_cost(values, 9), 0.0);
}

TEST(OptimalCost, SplitsSmallCasesAsOneWouldByHand) {
    EXPECT_DOUBLE_EQ(optimal_cost({4, 0, 11}, 1), 62);
    EXPECT_EQ(optimal_cost({4, 0, 10}, 2), 8);
    EXPECT_EQ(optimal_cost({4, 0, 10}, 3), 0);
    EXPECT_EQ(optimal_cost({4, 0, 10}, 9), 0);
    EXPECT_EQ(optimal_cost({5, 5, 9, 5}, 2), 0);
}

}  // namespace
}  // namespace vela::gvm
