#include <algorithm>
#include <cstdint>
#include <vela/audio/Delta.hpp>
#include <vela/numeric/wrap.hpp>
#include <vela/simd/widest.hpp>

namespace vela::audio {

namespace {

double add_squares_in_order(std::span<const int> a, std::span<const int> b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double difference = numeric::wrap_sub(a[i], b[i]);
        sum += difference * difference;
    }
    return sum;
}

/// In integers, which sum up in any order.
struct Sums {
    std::uint64_t squares;
    std::uint32_t magnitudes;  ///< the bits of all
    int peak;
};

// Summed up outside of the struct, two members of which Clang keeps in one register: it takes the
// samples one by one then.
Sums sum_up(std::span<const int> a, std::span<const int> b) {
    std::uint64_t squares = 0;
    std::uint32_t magnitudes = 0;
    int peak = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const int difference = numeric::wrap_abs(numeric::wrap_sub(a[i], b[i]));
        const auto magnitude = static_cast<std::uint32_t>(difference);
        peak = std::max(peak, difference);
        magnitudes |= magnitude;
        squares += std::uint64_t{magnitude} * magnitude;
    }
    return {squares, magnitudes, peak};
}

}  // namespace

// Where all squares together stay below 2^53 every partial sum is an integer that a double holds,
// so that integers give the same, several at a time.
Delta Delta::between(std::span<const int> a, std::span<const int> b) {
    constexpr std::uint64_t exact = std::uint64_t{1} << 53;
    constexpr std::uint32_t largest = 1u << 20;  // 8192 squares below it stay below
    const Sums sums = simd::widest<sum_up>(a, b);
    const bool is_exact = sums.magnitudes < largest && a.size() <= exact / largest / largest;
    return {is_exact ? static_cast<double>(sums.squares) : add_squares_in_order(a, b), sums.peak};
}

}  // namespace vela::audio
