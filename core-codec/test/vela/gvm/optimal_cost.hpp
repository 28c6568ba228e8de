#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace vela::gvm {

/// Cost of the best way to split numbers into at most `k` clusters: what no learner can beat.
///
/// In one dimension the best clusters are runs of the sorted numbers, so that the costs for 1, 2,
/// ... clusters follow from each other: O(k * n^2).
inline double optimal_cost(std::vector<int> values, std::size_t k) {
    std::sort(values.begin(), values.end());
    const std::size_t size = values.size();
    std::vector<double> sums(size + 1);
    std::vector<double> squares(size + 1);
    for (std::size_t i = 0; i < size; ++i) {
        const double x = values[i];
        sums[i + 1] = sums[i] + x;
        squares[i + 1] = squares[i] + x * x;
    }
    const auto cost_of_run = [&](std::size_t begin, std::size_t end) {
        const double sum = sums[end] - sums[begin];
        return squares[end] - squares[begin] - sum * sum / static_cast<double>(end - begin);
    };

    std::vector<double> costs(size + 1, std::numeric_limits<double>::infinity());
    costs[0] = 0;
    for (std::size_t clusters = 0; clusters < k; ++clusters)
        for (std::size_t end = size; end > 0; --end)
            for (std::size_t begin = 0; begin < end; ++begin)
                costs[end] = std::min(costs[end], costs[begin] + cost_of_run(begin, end));
    return costs[size];
}

}  // namespace vela::gvm
