#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>
#include <vela/fixed_width/bit_width.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Learner.hpp>
#include <vela/gvm/fast/PlainLearner.hpp>

namespace vela::gvm::fast {
namespace {

template <std::size_t N>
class Twin {
public:
    explicit Twin(bool update_all) {
        plain_.update_all_after_insert = update_all;
        fast_.set_update_all_after_insert(update_all);
    }

    void learn_and_merge_to_the_end(unsigned k, const std::vector<int>& values) {
        learn(k, values);
        merge_to_the_end();
    }

    void learn(unsigned k, std::vector<int> values) {
        const auto range = range_of<N>(values);
        nr_deltas_ = range.size();
        ASSERT_EQ(fast_.learn(k, range), plain_.learn(k, range));
        expect_same_();
    }

    void merge_to_the_end() {
        while (!testing::Test::HasFailure() && plain_.nr_live() > 1) {
            ASSERT_TRUE(plain_.merge_two_clusters());
            ASSERT_TRUE(fast_.merge_two_clusters());
            expect_same_();
        }
        EXPECT_FALSE(fast_.merge_two_clusters());
    }

private:
    void expect_same_() {
        const std::size_t size = plain_.nr_live();
        ASSERT_EQ(fast_.nr_clusters(), size);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(fast_.cost()),
                  std::bit_cast<std::uint64_t>(plain_.cost()));
        std::vector<unsigned> sizes(size);
        ASSERT_TRUE(fast_.get_sizes(sizes));
        EXPECT_EQ(sizes, plain_.sizes());
        std::vector<std::array<int, N>> centers(size);
        ASSERT_TRUE(fast_.get_centers(centers));
        EXPECT_EQ(centers, plain_.centers());
        unsigned width = 0;
        ASSERT_TRUE(fast_.get_center_width(width));
        EXPECT_EQ(width, fixed_width::bit_width(centers));
        std::vector<unsigned long> ixs(nr_deltas_);
        ASSERT_TRUE(fast_.get_ixs(ixs));
        EXPECT_EQ(ixs, plain_.ixs());
    }

    Learner<double, Iterator<N>> fast_;
    plain::Learner<N> plain_;
    std::size_t nr_deltas_ = 0;
};

template <std::size_t N>
void compare(unsigned k, const std::vector<int>& values) {
    for (const bool update_all : {false, true}) {
        SCOPED_TRACE(testing::Message() << "N " << N << " update_all " << update_all << " k " << k
                                        << " values " << values.size());
        Twin<N>(update_all).learn_and_merge_to_the_end(k, values);
        if (testing::Test::HasFailure()) return;
    }
}

void compare_both(unsigned k, const std::vector<int>& values) {
    compare<1>(k, values);
    compare<2>(k, values);
}

// Few different values make ties and deltas that lie exactly on a center; wide ones make sums of
// squares that no double holds exactly, so that every order of operations shows.
TEST(FastLearnerTwin, EqualsThePlainOneOnSmallInputs) {
    unsigned seed = 1;
    for (const int limit : {1, 2, 3, 5, 10, 40, 200, 5000, 8388607, 2147483647})
        for (const unsigned k : {1, 2, 3, 4, 5, 7, 10, 20})
            for (int round = 0; round < 100 && !HasFailure(); ++round, ++seed)
                compare_both(k, uniform_values(2 * (seed % 60), limit, seed));
}

TEST(FastLearnerTwin, EqualsThePlainOneOnLongInputs) {
    unsigned seed = 1000000;
    for (const int limit : {3, 8, 30, 300, 3000, 1000000})
        for (const unsigned k : {1, 2, 9, 33, 80, 150, 200})
            if (!HasFailure()) compare_both(k, uniform_values(600, limit, ++seed));
}

TEST(FastLearnerTwin, EqualsThePlainOneOnDeltasLikeThoseOfMusic) {
    unsigned seed = 2000000;
    for (const double scale : {2.0, 10.0, 60.0, 2000.0, 100000.0})
        for (const unsigned k : {2, 20, 50, 150})
            if (!HasFailure()) compare_both(k, audio_like_values(1024, scale, ++seed));
}

// Far from the origin the costs are what rounding leaves of huge squares: negative ones, zeros
// where there is a distance, and no tie that survives another order of operations.
TEST(FastLearnerTwin, EqualsThePlainOneWhereRoundingDecides) {
    unsigned seed = 4000000;
    for (const int offset : {1000000007, 300000001, 94906266})
        for (const int limit : {1, 3, 20, 1000, 30000})
            for (const unsigned k : {2, 3, 4, 8})
                for (int round = 0; round < 20 && !HasFailure(); ++round) {
                    ++seed;
                    std::vector<int> values = uniform_values(2 + 2 * (seed % 20), limit, seed);
                    for (int& value : values)
                        value += offset;
                    std::fill_n(values.begin(), seed % 3, values.front());
                    compare_both(k, values);
                }
}

TEST(FastLearnerTwin, EqualsThePlainOneOnSortedInputs) {
    unsigned seed = 3000000;
    for (const int limit : {5, 50, 5000})
        for (const unsigned k : {3, 17, 100}) {
            std::vector<int> values = uniform_values(400, limit, ++seed);
            std::sort(values.begin(), values.end());
            if (!HasFailure()) compare_both(k, values);
        }
}

// One delta far out makes shadows so coarse that most clusters look alike to the sieve.
TEST(FastLearnerTwin, EqualsThePlainOneWithOutliers) {
    unsigned seed = 4000000;
    for (const int outlier : {1 << 16, 1 << 20, 1 << 25, 2147483647})
        for (const double scale : {1.0, 5.0, 300.0})
            for (const unsigned k : {2, 3, 40, 150}) {
                std::vector<int> values = audio_like_values(700, scale, ++seed);
                values[seed % 40] = outlier;
                values[2 + seed % 600] = -outlier;
                if (!HasFailure()) compare_both(k, values);
            }
}

// The sums leave 32 bits, and squares the 53 of a double.
TEST(FastLearnerTwin, EqualsThePlainOneOnLoudInputs) {
    unsigned seed = 5000000;
    for (const int limit : {1 << 20, 1 << 23, 1 << 25})
        for (const unsigned k : {1, 2, 3, 20, 100})
            for (int round = 0; round < 3 && !HasFailure(); ++round)
                compare_both(k, uniform_values(500, limit, ++seed));
}

// Runs of one value, and everything at two distances: ties wherever there can be any.
TEST(FastLearnerTwin, EqualsThePlainOneOnTies) {
    unsigned seed = 6000000;
    for (const int step : {0, 1, 6, 1 << 13, 1 << 25})
        for (const unsigned k : {1, 2, 3, 4, 6, 12})
            for (int round = 0; round < 30 && !HasFailure(); ++round) {
                std::vector<int> values = uniform_values(160, 4, ++seed);
                for (int& value : values)
                    value *= step;
                if (round % 3 == 0) std::sort(values.begin(), values.end());
                compare_both(k, values);
            }
}

// The last delta is looked at while there is one cluster alone.  By its turn that has grown, so
// that its cost is more than the look allows for, and the new one beside it is a little nearer.
TEST(FastLearnerTwin, EqualsThePlainOneWhereTheOnlyClusterHasGrownSinceTheLook) {
    static_assert(sieve::batch == 4);
    for (const unsigned k : {2, 3}) {
        compare<1>(k, {0, 0, 0, 0, 0, 0, 2309, 1000});
        compare<2>(k, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2309, 0, 1000, 0});
    }
}

// The look for 3 leaves the cluster at 0 alone, which absorbs the one at -2 to make room: the new
// cluster is next to the one at 6 then, and 100 has the two merged.
TEST(FastLearnerTwin, EqualsThePlainOneWhereTheNearestClusterIsMergedAway) {
    static_assert(sieve::batch == 4);
    compare<1>(3, {0, 6, -2, 6, 3, 100});
    compare<2>(3, {0, 0, 6, 0, -2, 0, 6, 0, 3, 0, 100, 0});
}

// As long as remembered costs are true, clusters that are merged to make room for a delta come no
// nearer to it than its nearest cluster.  Here (0, 0) has grown by its neighbours at (9, 0), and a
// hit has kept its merge with (-10, 0) from being renewed.  That seems cheap still when (-1, 6)
// comes, to which (0, 16) is nearest; but what the merge makes is nearer.
TEST(FastLearnerTwin, EqualsThePlainOneWhereAStaleMergeMakesTheNearestCluster) {
    static_assert(sieve::batch == 4);
    std::vector<int> values;
    const auto add = [&](int count, int x, int y) {
        for (; count > 0; --count)
            values.insert(values.end(), {x, y});
    };
    add(12, 0, 16);
    add(9, -10, 0);
    add(1, 0, 0);
    add(9, 9, 0);
    add(1, 300, 0);
    add(4, 0, 16);
    ASSERT_EQ(values.size() / 2 % sieve::batch, 0u) << "the next is looked at with the merge stale";
    add(1, -1, 6);
    add(1, 600, 0);
    compare<2>(4, values);
}

// The sieve has no numbers for that many positions, even where few of them fill.
TEST(FastLearnerTwin, EqualsThePlainOneWithMoreClustersThanTheSieveCanName) {
    std::vector<int> values = audio_like_values(2 * (sieve::max_clusters + 50), 4, 9000000);
    for (const bool update_all : {false, true}) {
        Twin<1>(update_all).learn(sieve::max_clusters + 1, values);
        Twin<2>(update_all).learn(sieve::max_clusters + 1, values);
    }
}

// A learner is used again and again, with other counts of deltas and clusters each time.
TEST(FastLearnerTwin, NothingIsLeftOverFromOneLearnToTheNext) {
    Twin<1> one(false);
    Twin<2> two(false);
    for (unsigned seed = 7000000; seed < 7000060 && !HasFailure(); ++seed) {
        const auto values = audio_like_values(2 * (1 + seed * 37 % 300), 40, seed);
        one.learn_and_merge_to_the_end(1 + seed * 11 % 80, values);
        two.learn_and_merge_to_the_end(1 + seed * 11 % 80, values);
    }
}

// One begins with the memory that another has left, while a third is still at work.
TEST(FastLearnerTwin, LearnersThatLiveAtOnceShareNothing) {
    for (unsigned seed = 8000000; seed < 8000020 && !HasFailure(); ++seed) {
        const auto values = [&](unsigned n) {
            return audio_like_values(200 + 2 * n, 40, seed + n);
        };
        Twin<2> before(true);
        before.learn(40, values(1));
        Twin<2>(false).learn_and_merge_to_the_end(90, values(100));
        Twin<2> after(false);
        after.learn(20, values(50));
        before.merge_to_the_end();
        after.merge_to_the_end();
    }
}

}  // namespace
}  // namespace vela::gvm::fast
