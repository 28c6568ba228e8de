#include <benchmark/benchmark.h>

#include <random>
#include <vela/permutation/MersenneTwister.hpp>

namespace vela::permutation {
namespace {

// 624 outputs each: as a block, and by calls of this engine and of the library's.
void block(benchmark::State& state) {
    MersenneTwister engine;
    for (auto _ : state) {
        const auto ready = engine.ready();
        benchmark::DoNotOptimize(ready.data());
        benchmark::ClobberMemory();
        engine.take(ready.size());
    }
}
BENCHMARK(block);

template <typename Engine>
void calls(benchmark::State& state) {
    Engine engine;
    for (auto _ : state)
        for (std::size_t i = 0; i < MersenneTwister::block_size; ++i)
            benchmark::DoNotOptimize(engine());
}
BENCHMARK(calls<MersenneTwister>);
BENCHMARK(calls<std::mt19937>);

}  // namespace
}  // namespace vela::permutation
