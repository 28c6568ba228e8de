#include <benchmark/benchmark.h>

#include <vector>
#include <vela/permutation/Permutation.hpp>

namespace vela::permutation {
namespace {

// What each learner does before it learns: a block of 1024 samples.
void make(benchmark::State& state) {
    MersenneTwister engine;
    std::vector<unsigned long> elements(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        Permutation permutation;
        permutation.identity(elements.size());
        permutation.randomize(engine);
        benchmark::DoNotOptimize(permutation.shuffle(elements));
        permutation.invert();
        benchmark::DoNotOptimize(permutation.shuffle(elements));
    }
}
BENCHMARK(make)->Arg(1024);

void shuffle(benchmark::State& state) {
    MersenneTwister engine;
    std::vector<int> values(2 * static_cast<std::size_t>(state.range(0)));
    using At = segment::Iterator<2, int>;
    const Range<At> pairs(At(values.data()), At(values.data() + values.size()));
    Permutation permutation;
    permutation.identity(pairs.size());
    permutation.randomize(engine);
    benchmark::DoNotOptimize(values.data());
    for (auto _ : state) {
        benchmark::DoNotOptimize(permutation.shuffle(pairs));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(shuffle)->Arg(1024);

}  // namespace
}  // namespace vela::permutation
