#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <span>
#include <string>
#include <vector>
#include <vela/AudioSource.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/fast/Learner.hpp>
#include <vela/gvm/fast/PlainLearner.hpp>
#include <vela/mix/deltas.hpp>

// What the work of the fast learner is worth: `learn(150)` over the deltas of real frames, beside
// the plain twin that the tests compare it with.  VELA_BENCH_AUDIO is a folder of
// scripts/make-bench-audio. There are many frames, since processors learn the branches of a single
// one by heart: that alone makes it twice as fast.

namespace vela::gvm::fast {
namespace {

using Source = AudioSource<int, api::ChannelVariant>;
using Deltas = std::vector<int>;

constexpr std::size_t nr_deltas = 1024;
constexpr std::size_t nr_frames = 300;
constexpr unsigned nr_clusters = 150;

/// Who shares a carrier: the first two in 9.1, all three in 13.1.
using Names = std::array<const char*, 3>;
constexpr Names mixes[] = {
    {"L", "HL", "T"}, {"R", "HR", "T"}, {"Ls", "HLs", "T"}, {"Rs", "HRs", "T"}};

api::ChannelVariant key_of(const char* name) {
    api::ChannelVariant key;
    static_cast<void>(key.parse(name));
    return key;
}

template <std::size_t N>
bool open(Source& source, const Names& names) {
    const char* const folder = std::getenv("VELA_BENCH_AUDIO");
    if (!folder) return false;
    source.set_frame_size(nr_deltas);
    return std::all_of(names.begin(), names.begin() + N + 1,
                       [&](const char* name) {
                           const std::string file = std::string(folder) + '/' + name + ".wav";
                           return source.add(key_of(name), file::Name(file));
                       }) &&
           source.prepare();
}

/// The deltas of a frame whose low bits make room for the record, as many as mostly win.
template <std::size_t N>
Deltas deltas_of(const Source::Frames& frames, const Names& names) {
    std::array<Deltas, N + 1> channels;
    for (std::size_t c = 0; c <= N; ++c)
        for (const int sample : frames.find(key_of(names[c]))->samples())
            channels[c].push_back(sample >> (N == 1 ? 8 : 10));
    Deltas deltas(N * nr_deltas);
    if constexpr (N == 1)
        static_cast<void>(mix::deltas(deltas, channels[0], channels[1]));
    else
        static_cast<void>(mix::deltas(deltas, channels[0], channels[1], channels[2]));
    return deltas;
}

/// Shuffled, as the encoder hands them to its learner.
template <std::size_t N>
void shuffle(Deltas& deltas, std::mt19937& engine) {
    std::vector<std::array<int, N>> points(nr_deltas);
    std::copy(deltas.begin(), deltas.end(), points.front().data());
    std::shuffle(points.begin(), points.end(), engine);
    std::copy_n(points.front().data(), deltas.size(), deltas.begin());
}

/// Frames from all over the recordings; none if they cannot be read.
template <std::size_t N>
std::vector<Deltas> read_frames() {
    std::vector<Deltas> all;
    for (const Names& names : mixes) {
        Source source;
        if (!open<N>(source, names)) return {};
        Source::Frames frames;
        api::SampleSpan span;
        for (; source.get(frames, span); source.pop_front())
            all.push_back(deltas_of<N>(frames, names));
    }
    std::mt19937 engine(1);
    std::shuffle(all.begin(), all.end(), engine);
    all.resize(std::min(all.size(), nr_frames));
    for (Deltas& deltas : all)
        shuffle<N>(deltas, engine);
    return all;
}

template <std::size_t N, typename Any>
void learn_all(benchmark::State& state, Any& learner) {
    static std::vector<Deltas> all = read_frames<N>();
    if (all.empty()) return state.SkipWithError("VELA_BENCH_AUDIO holds no recordings");
    std::size_t frame = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            learner.learn(nr_clusters, range_of<N>(all[frame++ % all.size()])));
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

BENCHMARK(BM_learn_plain<1>)->Unit(benchmark::kMicrosecond)->Iterations(nr_frames);
BENCHMARK(BM_learn_fast<1>)->Unit(benchmark::kMicrosecond)->Iterations(nr_frames);
BENCHMARK(BM_learn_plain<2>)->Unit(benchmark::kMicrosecond)->Iterations(nr_frames);
BENCHMARK(BM_learn_fast<2>)->Unit(benchmark::kMicrosecond)->Iterations(nr_frames);

}  // namespace
}  // namespace vela::gvm::fast
