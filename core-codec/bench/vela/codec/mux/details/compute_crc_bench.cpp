#include <benchmark/benchmark.h>

#include <vector>
#include <vela/Range.hpp>
#include <vela/codec/mux/details/compute_crc.hpp>

namespace vela::codec::mux::details {

void crc_of_a_block(benchmark::State& state) {
    std::vector<int> samples(1024);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<int>(i * 7919) - (1 << 20);
    const Range<const int*> range(samples.data(), samples.data() + samples.size());
    for (auto _ : state) {
        unsigned long crc = 0;
        benchmark::DoNotOptimize(compute_crc(24, crc, range));
        benchmark::DoNotOptimize(crc);
    }
    state.SetItemsProcessed(state.iterations() * 1024);
}

BENCHMARK(crc_of_a_block);

}  // namespace vela::codec::mux::details
