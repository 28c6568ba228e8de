#include <benchmark/benchmark.h>

#include <cstdint>
#include <numeric>
#include <vector>
#include <vela/crc/CRC16_CCITT.hpp>

namespace vela::crc {
namespace {

// Three bytes a sample: 3072 is a block of 1024.
void add(benchmark::State& state) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(state.range(0)));
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    for (auto _ : state) {
        CRC16_CCITT<unsigned short> crc;
        for (const auto byte : bytes)
            crc.add(byte);
        benchmark::DoNotOptimize(crc.value());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(add)->Arg(48)->Arg(3072);

}  // namespace
}  // namespace vela::crc
