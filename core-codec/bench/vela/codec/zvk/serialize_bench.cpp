#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vela/codec/zvk/serialize.hpp>

namespace vela::codec::zvk {

// One winner of a 9.1 run: two channels, 1024 samples, 144 centers, codes of seven bits.
void serialize_record(benchmark::State& state) {
    const auto nr_bitlines = static_cast<unsigned>(state.range(0));
    std::mt19937 engine(1);
    const std::vector<std::int32_t> seeds{1, -1};
    ZVK::Centers1 centers(144);
    for (auto& center : centers)
        center[0] = static_cast<int>(engine() % 500) - 250;
    std::exponential_distribution size(1 / 40.0);
    std::vector<std::uint64_t> ixs(1024);
    for (std::uint64_t& ix : ixs)
        ix = std::min<std::uint64_t>(static_cast<std::uint64_t>(size(engine)), centers.size() - 1);

    ZVK record;
    record.mix_seeds = &seeds;
    record.set_centers(&centers);
    record.center_bits = 9;
    record.ixs = &ixs;
    record.rice_k = 5;
    std::vector<int> samples(1024);
    for (auto _ : state) {
        std::ranges::fill(samples, 0);
        const bool ok =
            serialize<24>({samples.data(), samples.data() + samples.size()}, record, nr_bitlines);
        if (!ok) state.SkipWithError("the record does not fit");
        benchmark::DoNotOptimize(samples.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 1024);
}

BENCHMARK(serialize_record)->ArgName("bitlines")->Arg(9)->Arg(12);

}  // namespace vela::codec::zvk
