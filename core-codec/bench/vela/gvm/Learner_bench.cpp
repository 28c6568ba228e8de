#include <benchmark/benchmark.h>

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

/// Beside the time of one `learn`: its total cost, and in one dimension the lowest possible.
template <std::size_t N>
void BM_learn(benchmark::State& state, const std::string& name, bool update_all,
              std::vector<int> values) {
    values.resize(N * nr_deltas);
    double cost = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(cost = learn<N>(name, update_all, values));
    state.counters["cost"] = cost;
    if (N == 1) {
        static double optimum = 0;
        static std::vector<int> optimum_of;
        if (optimum_of != values) optimum = optimal_cost(values, nr_clusters);
        optimum_of = values;
        state.counters["optimum"] = optimum;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(nr_deltas));
}

template <std::size_t N>
void register_all() {
    for (const auto& [input, values] : inputs())
        for (const auto& [name, update_all] :
             {std::pair("fast", false), std::pair("fast", true), std::pair("ref", true)}) {
            const std::string label =
                "learn<" + std::to_string(N) + ">/" + input + '/' + name +
                (name == std::string("fast") && update_all ? "_update_all" : "");
            benchmark::RegisterBenchmark(label.c_str(), BM_learn<N>, std::string(name), update_all,
                                         values)
                ->Unit(benchmark::kMicrosecond);
        }
}

const bool registered = (register_all<1>(), register_all<2>(), true);

}  // namespace
}  // namespace vela::gvm
