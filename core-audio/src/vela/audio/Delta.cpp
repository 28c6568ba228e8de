#include <algorithm>
#include <cstdint>
#include <vela/audio/Delta.hpp>
#include <vela/numeric/wrap.hpp>

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

}  // namespace

// Where all squares together stay below 2^53 every partial sum is an integer that a double holds,
// so that integers give the same, several at a time.
Delta Delta::between(std::span<const int> a, std::span<const int> b) {
    constexpr std::uint64_t exact = std::uint64_t{1} << 53;
    constexpr std::uint32_t largest = 1u << 20;  // 8192 squares below it stay below
    std::uint64_t sum = 0;
    std::uint32_t magnitudes = 0;
    int peak = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const int difference = numeric::wrap_abs(numeric::wrap_sub(a[i], b[i]));
        const auto magnitude = static_cast<std::uint32_t>(difference);
        peak = std::max(peak, difference);
        magnitudes |= magnitude;
        sum += std::uint64_t{magnitude} * magnitude;
    }
    const bool is_exact = magnitudes < largest && a.size() <= exact / largest / largest;
    return {is_exact ? static_cast<double>(sum) : add_squares_in_order(a, b), peak};
}

}  // namespace vela::audio
