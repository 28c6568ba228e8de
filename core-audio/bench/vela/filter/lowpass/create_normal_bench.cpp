#include <benchmark/benchmark.h>

#include <vector>
#include <vela/filter/lowpass/create_normal.hpp>

namespace vela::filter::lowpass {
namespace {

// One block of one channel, as the run feeds it.
void block(benchmark::State& state, Type type) {
    const auto filter = create_normal<double>(type, 20000, 48000);
    std::vector<double> samples(1024, 1000.0);
    for (auto _ : state) {
        (*filter)(samples);
        benchmark::DoNotOptimize(samples.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(samples.size()));
}

BENCHMARK_CAPTURE(block, none, Type::None);
BENCHMARK_CAPTURE(block, fir, Type::FIR);
BENCHMARK_CAPTURE(block, iir, Type::IIR);

}  // namespace
}  // namespace vela::filter::lowpass
