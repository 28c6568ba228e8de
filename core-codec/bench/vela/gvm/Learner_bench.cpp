#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include <vela/gvm/create.hpp>
#include <vela/gvm/deltas.hpp>
#include <vela/gvm/optimal_cost.hpp>

namespace vela::gvm {
namespace {

constexpr std::size_t nr_deltas = 1024;  // one frame of two channels
constexpr unsigned nr_clusters = 150;    // the most that the encoder asks for by default

const std::vector<std::pair<std::string, std::vector<int>>>& inputs() {
    static const std::vector<std::pair<std::string, std::vector<int>>> all{
        {"LikeMusic", audio_like_values(2 * nr_deltas, 2000, 1)},
        {"LikeQuietMusic", audio_like_values(2 * nr_deltas, 40, 2)},
        {"Uniform", uniform_values(2 * nr_deltas, 30000, 3)},
        {"FewValues", uniform_values(2 * nr_deltas, 100, 4)}};
    return all;
}

template <std::size_t N>
double learn(const std::string& name, bool update_all, std::vector<int>& values) {
    std::shared_ptr<api::Learner<double, Iterator<N>>> learner;
    if (!create(learner, name)) return -1;
    learner->set_update_all_after_insert(update_all);
    return learner->learn(nr_clusters, range_of<N>(values)) ? learner->cost() : -1;
}

using Values = std::vector<int>;

/// Beside the time of one `learn` its total cost, which shows what the time bought.
template <std::size_t N>
void BM_learn(benchmark::State& state, const std::string& name, bool update_all, Values values) {
    values.resize(N * nr_deltas);
    double cost = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(cost = learn<N>(name, update_all, values));
    state.counters["cost"] = cost;
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(nr_deltas));
}

/// The lowest cost that any learner could reach.
void BM_optimum(benchmark::State& state, Values values) {
    values.resize(nr_deltas);
    double cost = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(cost = optimal_cost(values, nr_clusters));
    state.counters["cost"] = cost;
}

template <typename Function, typename... Args>
void add(const std::string& label, Function function, const Args&... args) {
    benchmark::RegisterBenchmark(label.c_str(), function, args...)->Unit(benchmark::kMicrosecond);
}

template <std::size_t N>
void add_all() {
    const std::string prefix = "learn<" + std::to_string(N) + ">/";
    for (const auto& [input, values] : inputs()) {
        add(prefix + input + "/fast", BM_learn<N>, std::string("fast"), false, values);
        add(prefix + input + "/fast_update_all", BM_learn<N>, std::string("fast"), true, values);
        add(prefix + input + "/ref", BM_learn<N>, std::string("ref"), true, values);
        if (N == 1) add(prefix + input + "/optimum", BM_optimum, values);
    }
}

const bool added = (add_all<1>(), add_all<2>(), true);

}  // namespace
}  // namespace vela::gvm
