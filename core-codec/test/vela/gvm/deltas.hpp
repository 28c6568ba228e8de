#pragma once

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>
#include <vela/Range.hpp>
#include <vela/segment/Iterator.hpp>

/// Deltas for the tests and benchmarks of the learners.
namespace vela::gvm {

template <std::size_t N>
using Iterator = segment::Iterator<N, int>;

/// The deltas in `values`, `N` numbers each; not valid if there are none.
template <std::size_t N>
Range<Iterator<N>> range_of(std::vector<int>& values) {
    if (values.empty()) return {};
    return {Iterator<N>(values.data()), Iterator<N>(values.data() + values.size())};
}

inline std::vector<int> uniform_values(std::size_t size, int limit, unsigned seed) {
    std::mt19937 engine(seed);
    const auto span = 2 * static_cast<unsigned long>(limit) + 1;
    std::vector<int> values(size);
    for (int& value : values)
        value = static_cast<int>(static_cast<long>(engine() % span) - limit);
    return values;
}

/// Prediction errors of music look like this: many near 0, few far out (Laplace distribution).
inline std::vector<int> audio_like_values(std::size_t size, double scale, unsigned seed) {
    std::mt19937 engine(seed);
    std::vector<int> values(size);
    for (int& value : values) {
        const double uniform = (static_cast<double>(engine()) + 1) / 4294967296.0;
        const double magnitude = -scale * std::log(uniform);
        value = static_cast<int>(engine() % 2 ? magnitude : -magnitude);
    }
    return values;
}

}  // namespace vela::gvm
