#include <benchmark/benchmark.h>

#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encode/gvm/Factory.hpp>

namespace vela::codec::v3::encode {
namespace {

Group candidate(int nr_channels) {
    Group group = group_of(9, {music(1024, 1), music(1024, 2), music(1024, 3)});
    group.origs.resize(static_cast<std::size_t>(nr_channels));
    group.centers_start_2 = group.centers_start_3 = 120;
    return group;
}

/// A candidate that has gone through all stages.
Group finished(int nr_channels) {
    Group group = candidate(nr_channels);
    Chain chain;
    if (chain(group) != Chain::Code::ok) std::abort();
    return group;
}

void adapter(benchmark::State& state) {
    const auto nr_channels = static_cast<unsigned>(state.range(0));
    Group group = finished(static_cast<int>(nr_channels));
    std::vector<unsigned> sizes;
    for (auto _ : state) {
        const auto learner = gvm::create("fast", nr_channels, group.deltas, false, false, true);
        benchmark::DoNotOptimize(learner->learn(120, true) && learner->get_ixs(group) &&
                                 learner->get_centers(group) && learner->get_sizes(sizes));
    }
}
BENCHMARK(adapter)->Arg(2)->Arg(3);

template <typename Stage>
void stage(benchmark::State& state) {
    Group group = finished(static_cast<int>(state.range(0)));
    Stage run;
    for (auto _ : state)
        benchmark::DoNotOptimize(run(group));
}
BENCHMARK(stage<Rescaler>)->Arg(1)->Arg(2)->Arg(3);
BENCHMARK(stage<ComputeDeltas>)->Arg(2)->Arg(3);
BENCHMARK(stage<ClusterDeltas>)->Arg(2)->Arg(3);
BENCHMARK(stage<Mixer>)->Arg(1)->Arg(2)->Arg(3);
BENCHMARK(stage<ComputeQuality>)->Arg(1)->Arg(2)->Arg(3);

void whole_candidate(benchmark::State& state) {
    const Group fresh = candidate(static_cast<int>(state.range(0)));
    Chain chain;
    for (auto _ : state) {
        Group group = fresh;
        benchmark::DoNotOptimize(chain(group));
    }
}
BENCHMARK(whole_candidate)->Arg(1)->Arg(2)->Arg(3);

}  // namespace
}  // namespace vela::codec::v3::encode
