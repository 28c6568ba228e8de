#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vela/gvm/fast/Storage.hpp>
#include <vela/gvm/fast/costs_sets.hpp>

namespace vela::gvm::fast::costs {
namespace {

bool machine_has([[maybe_unused]] const std::string& set) {
#if defined(__x86_64__)
    if (set == "avx2") return __builtin_cpu_supports("avx2");
    if (set == "avx512") return __builtin_cpu_supports("avx512f");
#endif
    return set == "sse2";
}

template <std::size_t N>
const Functions<N>& functions_of(const std::string& set) {
    if constexpr (N == 1)
        return set == "avx512" ? avx512::one : set == "avx2" ? avx2::one : sse2::one;
    else
        return set == "avx512" ? avx512::two : set == "avx2" ? avx2::two : sse2::two;
}

template <std::size_t N>
Cluster<double, N> random_cluster(std::mt19937& engine, int magnitude) {
    std::uniform_int_distribution<int> value(-magnitude, magnitude);
    Cluster<double, N> cluster;
    for (int n = std::uniform_int_distribution<int>(1, 9)(engine); n > 0; --n) {
        typename Cluster<double, N>::Vector delta;
        for (double& x : delta)
            x = value(engine);
        cluster.insert(delta);
    }
    return cluster;
}

template <std::size_t N>
Fixed<N> fixed_of(const Cluster<double, N>& cluster) {
    Fixed<N> fixed{{}, cluster.sum_sq, static_cast<double>(cluster.count), cluster.cost};
    std::copy(cluster.sum.begin(), cluster.sum.end(), fixed.sum);
    return fixed;
}

/// Every lane must do what the plain formula does, since one bit decides which clusters merge.
template <std::size_t N>
void expect_plain_costs(const std::string& set, std::mt19937& engine, std::size_t size) {
    Storage<double, N> storage;
    storage.reset(size);
    for (std::size_t i = 0; i < size; ++i)
        storage.store(static_cast<Position>(i), random_cluster<N>(engine, 1 << (i % 24)));
    const auto other = random_cluster<N>(engine, 1000);
    const std::size_t first = engine() % size;

    std::vector<double> with_partner(size + padding), as_owner(size + padding);
    const auto& functions = functions_of<N>(set);
    functions.with_partner(with_partner.data(), storage.columns(), first, size, fixed_of(other));
    functions.as_owner(as_owner.data(), storage.columns(), first, size, fixed_of(other));
    for (std::size_t i = first; i < size; ++i) {
        const auto cluster = storage.load(static_cast<Position>(i));
        double expected = 0;
        cluster.merge_delta(expected, other);
        ASSERT_EQ(with_partner[i], expected);
        other.merge_delta(expected, cluster);
        ASSERT_EQ(as_owner[i], expected);
    }
}

class InstructionSet : public testing::TestWithParam<const char*> {
    void SetUp() override {
        if (!machine_has(GetParam())) GTEST_SKIP() << "this machine has no " << GetParam();
    }
};

TEST_P(InstructionSet, GivesTheBitsOfThePlainFormula) {
    std::mt19937 engine(5);
    for (int round = 0; round < 4000; ++round) {
        expect_plain_costs<1>(GetParam(), engine, 1 + engine() % 40);
        expect_plain_costs<2>(GetParam(), engine, 1 + engine() % 40);
    }
}

TEST_P(InstructionSet, FindsTheLowestAndAnExactZeroAnywhere) {
    std::mt19937 engine(6);
    for (int round = 0; round < 20000; ++round) {
        std::vector<double> values(1 + engine() % 40);
        for (double& x : values)
            x = static_cast<int>(engine() % 9) - 2;
        const std::size_t first = engine() % values.size();
        const auto begin = values.begin() + static_cast<std::ptrdiff_t>(first);
        const auto found = functions_of<1>(GetParam()).lowest(values.data(), first, values.size());
        ASSERT_EQ(found.value, *std::min_element(begin, values.end()));
        ASSERT_EQ(found.has_zero, std::find(begin, values.end(), 0.0) != values.end());
    }
}

INSTANTIATE_TEST_SUITE_P(Costs, InstructionSet, testing::Values("sse2", "avx2", "avx512"),
                         [](const auto& of) { return std::string(of.param); });

}  // namespace
}  // namespace vela::gvm::fast::costs
