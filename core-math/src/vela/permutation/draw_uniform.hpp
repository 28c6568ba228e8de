#pragma once

#include <bit>
#include <cstdint>

namespace vela::permutation {

/// `nr_bits` (1 to 64) random bits from the fewest outputs of a 32-bit engine; a share of each
/// output's low bits, the first output on top (`std::independent_bits_engine`, with a width that is
/// known at run time alone).
template <typename Engine>
std::uint64_t draw_bits(Engine& engine, unsigned nr_bits) {
    static_assert(Engine::min() == 0 && Engine::max() == 0xFFFFFFFFu);
    if (nr_bits <= 32) return engine() & (~std::uint64_t{0} >> (64 - nr_bits));
    const unsigned nr_outputs = (nr_bits + 31) / 32;
    const unsigned share = nr_bits / nr_outputs;
    const unsigned nr_even_shares = nr_outputs - nr_bits % nr_outputs;

    std::uint64_t value = 0;
    for (unsigned i = 0; i < nr_outputs; ++i) {
        const unsigned width = i < nr_even_shares ? share : share + 1;
        const std::uint64_t mask = (std::uint64_t{1} << width) - 1;
        value = value << width | (engine() & mask);
    }
    return value;
}

/// Uniform integer from `a` to `b`, both included; a <= b.
///
/// Written out, since `std::uniform_int_distribution` may draw differently in every library, and
/// the sequence decides which carrier comes out.  No number is drawn for a == b; otherwise as many
/// low bits as b - a needs are drawn, again and again until they are in range.
template <typename Engine>
std::uint64_t draw_uniform(Engine& engine, std::uint64_t a, std::uint64_t b) {
    const std::uint64_t span = b - a;
    if (span == 0) return a;
    const auto nr_bits = static_cast<unsigned>(std::bit_width(span));
    std::uint64_t value = draw_bits(engine, nr_bits);
    while (value > span)
        value = draw_bits(engine, nr_bits);
    return a + value;
}

}  // namespace vela::permutation
