#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>
#include <vela/mix/deltas.hpp>
#include <vela/mix/mix.hpp>
#include <vela/mix/unmix.hpp>

namespace vela::mix {
namespace {

/// Three channels of one frame, and clusters as a group with some 100 centers has them.
struct Frame {
    explicit Frame(std::size_t size)
        : x(3, std::vector<int>(size)), y(x), d(2 * size), m(size), ixs(size) {
        std::mt19937 engine(1);
        std::uniform_int_distribution<int> sample(-(1 << 20), (1 << 20) - 1);
        for (auto& channel : x)
            for (int& s : channel)
                s = sample(engine);
        for (auto& ix : ixs)
            ix = engine() % 100;
    }

    std::vector<std::vector<int>> x, y;
    std::vector<int> d, m;
    std::vector<std::uint64_t> ixs;
    std::vector<int> seeds2 = std::vector<int>(2), seeds3 = std::vector<int>(5);
    Centers1 centers1 = Centers1(100, {17});
    Centers2 centers2 = Centers2(100, {17, -4});
};

template <typename Run>
void measure(benchmark::State& state, Run run) {
    Frame f(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(run(f));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void deltas_of_two(benchmark::State& state) {
    measure(state, [](Frame& f) { return deltas({f.d.data(), f.m.size()}, f.x[0], f.x[1]); });
}
void deltas_of_three(benchmark::State& state) {
    measure(state, [](Frame& f) { return deltas(f.d, f.x[0], f.x[1], f.x[2]); });
}
void mix_of_two(benchmark::State& state) {
    measure(state, [](Frame& f) { return mix(f.seeds2, f.m, f.ixs, f.centers1, f.x[0], f.x[1]); });
}
void mix_of_three(benchmark::State& state) {
    measure(state,
            [](Frame& f) { return mix(f.seeds3, f.m, f.ixs, f.centers2, f.x[0], f.x[1], f.x[2]); });
}
void unmix_of_two(benchmark::State& state) {
    measure(state,
            [](Frame& f) { return unmix(f.y[0], f.y[1], f.seeds2, f.m, f.ixs, f.centers1); });
}
void unmix_of_three(benchmark::State& state) {
    measure(state, [](Frame& f) {
        return unmix(f.y[0], f.y[1], f.y[2], f.seeds3, f.m, f.ixs, f.centers2);
    });
}

BENCHMARK(deltas_of_two)->Arg(1024);
BENCHMARK(deltas_of_three)->Arg(1024);
BENCHMARK(mix_of_two)->Arg(1024);
BENCHMARK(mix_of_three)->Arg(1024);
BENCHMARK(unmix_of_two)->Arg(1024);
BENCHMARK(unmix_of_three)->Arg(1024);

}  // namespace
}  // namespace vela::mix
