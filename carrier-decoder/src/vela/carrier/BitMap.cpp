#include <vela/carrier/BitMap.hpp>

namespace vela::carrier {

namespace {

constexpr std::size_t row = 16;  // samples between two that leave line 0 empty

BitPlace place_in_first_row(std::size_t record_bit, unsigned nr_bitlines) {
    if (record_bit < 3 * row) {
        return {record_bit % row, static_cast<unsigned>(record_bit / row)};
    }
    const std::size_t high_lines = nr_bitlines - 3;
    const std::size_t at = record_bit - 3 * row;
    return {at / high_lines, nr_bitlines - 1 - static_cast<unsigned>(at % high_lines)};
}

}  // namespace

std::size_t nr_record_bits(std::size_t nr_samples, unsigned nr_bitlines) {
    return nr_bitlines * nr_samples - (nr_samples - 1) / row;
}

BitPlace place_of(std::size_t record_bit, unsigned nr_bitlines) {
    if (record_bit < row * nr_bitlines) return place_in_first_row(record_bit, nr_bitlines);

    const std::size_t bits_per_row = row * nr_bitlines - 1;
    const std::size_t at = record_bit - row * nr_bitlines;
    const std::size_t first = row * (1 + at / bits_per_row);  // leaves its line 0 empty
    const std::size_t in_row = at % bits_per_row;
    const std::size_t bits_of_first = nr_bitlines - 1;
    if (in_row < bits_of_first) return {first, nr_bitlines - 1 - static_cast<unsigned>(in_row)};

    const std::size_t rest = in_row - bits_of_first;
    return {first + 1 + rest / nr_bitlines,
            nr_bitlines - 1 - static_cast<unsigned>(rest % nr_bitlines)};
}

// Walks through the places: to ask `place_of` for each took four tenths of a whole check.
std::vector<bool> read_record(std::span<const int> samples, unsigned nr_bitlines) {
    std::vector<bool> bits;
    bits.reserve(nr_record_bits(samples.size(), nr_bitlines));
    const auto take = [&](int x, unsigned from, unsigned to) {
        for (unsigned line = from; line > to; --line)
            bits.push_back((x >> (line - 1) & 1) != 0);
    };
    for (unsigned line = 0; line < 3; ++line) {
        for (const int x : samples.first(row))
            take(x, line + 1, line);
    }
    for (const int x : samples.first(row))
        take(x, nr_bitlines, 3);
    for (std::size_t t = row; t < samples.size(); ++t)
        take(samples[t], nr_bitlines, t % row == 0 ? 1 : 0);
    return bits;
}

}  // namespace vela::carrier
