#include <array>
#include <bit>
#include <numeric>
#include <utility>
#include <vela/permutation/Permutation.hpp>

namespace vela::permutation {

namespace {

using Offsets = std::array<std::uint32_t, MersenneTwister::block_size>;

// Draws offsets that are uniform up to `span`, `span` - 1, ..., 1, as many as the outputs that are
// ready give, and returns their count.  A value out of range is overwritten by the next one: nobody
// can foretell it, so that a branch would cost more.
std::size_t draw_offsets(MersenneTwister& engine, std::size_t span, Offsets& offsets) {
    const auto outputs = engine.ready();
    std::size_t used = 0;
    std::size_t count = 0;
    while (used < outputs.size() && count < span) {
        const auto widest = static_cast<std::uint32_t>(span - count);
        const std::uint32_t mask = ~std::uint32_t{0} >> std::countl_zero(widest);
        const std::size_t end = span - (mask >> 1);  // until here the mask is the same
        for (; used < outputs.size() && count < end; ++used) {
            const std::uint32_t value = outputs[used] & mask;
            offsets[count] = value;
            count += value <= span - count;
        }
    }
    engine.take(used);
    return count;
}

}  // namespace

void Permutation::identity(std::size_t n) {
    targets_.resize(n);
    std::iota(targets_.begin(), targets_.end(), Position{0});
}

// The draws of `draw_uniform`, a block of the engine at a time.
void Permutation::randomize(MersenneTwister& engine) {
    Offsets offsets;
    const std::size_t n = targets_.size();
    for (std::size_t i = 0; i + 1 < n;) {
        const std::size_t count = draw_offsets(engine, n - 1 - i, offsets);
        Position* const at = targets_.data() + i;
        for (std::size_t k = 0; k < count; ++k)
            std::swap(at[k], at[k + offsets[k]]);
        i += count;
    }
}

void Permutation::invert() {
    std::vector<Position> sources(targets_.size());
    for (Position i = 0; i < targets_.size(); ++i)
        sources[targets_[i]] = i;
    targets_ = std::move(sources);
}

}  // namespace vela::permutation
