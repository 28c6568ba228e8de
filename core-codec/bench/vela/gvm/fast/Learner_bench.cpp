#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Learner.hpp>
#include <vela/gvm/fast/PlainLearner.hpp>
#include <vela/mix/deltas.hpp>
#include <vela/mix/types.hpp>

// What the work of the fast learner is worth: `learn(150)` over the deltas of a frame, beside the
// plain twin that the tests compare it with.  There are many frames, since processors learn the
// branches of a single one by heart: that alone makes it twice as fast.

namespace vela::gvm::fast {
namespace {

constexpr std::size_t nr_deltas = 1024;
constexpr std::size_t nr_frames = 100;
constexpr unsigned nr_clusters = 150;

/// One channel of something like music: a few partials that swell and fade, and noise.
std::vector<int> signal(unsigned seed) {
    const std::size_t size = nr_frames * nr_deltas;
    const std::vector<int> noise = audio_like_values(size, 30, seed);
    std::vector<int> samples(size);
    for (std::size_t t = 0; t < size; ++t) {
        double sum = 0;
        for (unsigned partial = 1; partial <= 8; ++partial)
            sum += std::sin(0.011 * partial * (1 + 0.07 * seed) * static_cast<double>(t)) *
                   std::sin(0.000021 * static_cast<double>((partial + seed) * t)) / partial;
        samples[t] = static_cast<int>(6000 * sum) + noise[t];
    }
    return samples;
}

/// The deltas of each frame, shuffled as the encoder does it.
template <std::size_t N>
std::vector<std::vector<int>> frames() {
    const std::vector<int> channels[] = {signal(1), signal(2), signal(3)};
    std::mt19937 engine(1);
    std::vector<std::vector<int>> all;
    for (std::size_t frame = 0; frame < nr_frames; ++frame) {
        const auto view = [&](std::size_t channel) {
            return mix::Samples(channels[channel]).subspan(frame * nr_deltas, nr_deltas);
        };
        std::vector<std::array<int, N>> deltas(nr_deltas);
        const std::span<int> values(deltas.front().data(), N * nr_deltas);
        if constexpr (N == 1)
            static_cast<void>(mix::deltas(values, view(0), view(1)));
        else
            static_cast<void>(mix::deltas(values, view(0), view(1), view(2)));
        std::shuffle(deltas.begin(), deltas.end(), engine);
        all.emplace_back(values.begin(), values.end());
    }
    return all;
}

template <std::size_t N, typename Any>
void learn_all(benchmark::State& state, Any& learner) {
    auto all = frames<N>();
    std::size_t frame = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(learner.learn(nr_clusters, range_of<N>(all[frame++ % nr_frames])));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(nr_deltas));
}

template <std::size_t N>
void BM_learn_plain(benchmark::State& state) {
    plain::Learner<N> learner;
    learner.update_all_after_insert = false;
    learn_all<N>(state, learner);
}

template <std::size_t N>
void BM_learn_fast(benchmark::State& state) {
    Learner<double, Iterator<N>> learner;
    learner.set_update_all_after_insert(false);
    learn_all<N>(state, learner);
}

BENCHMARK(BM_learn_plain<1>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_learn_fast<1>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_learn_plain<2>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_learn_fast<2>)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vela::gvm::fast
