#include <array>
#include <bit>
#include <numeric>
#include <utility>
#include <vela/permutation/Permutation.hpp>

namespace vela::permutation {

namespace {

using Offsets = std::array<std::uint32_t, MersenneTwister::block_size>;

// Draws offsets that are uniform below `left`, `left` - 1, ..., 2, as many as the outputs that are
// ready give, and returns their count.  A value out of range is overwritten by the next one: nobody
// can foretell it, so that a branch would cost more.  All hangs on `left`, which is compared and
// counted down in two cycles.
std::size_t draw_offsets(MersenneTwister& engine, std::uint32_t left, Offsets& offsets) {
    const auto outputs = engine.ready();
    const std::uint32_t first = left;
    std::size_t used = 0;
    while (used < outputs.size() && left > 1) {
        const std::uint32_t mask = ~std::uint32_t{0} >> std::countl_zero(left - 1);
        const std::uint32_t end = (mask >> 1) + 1;  // until here the mask is the same
        for (; used < outputs.size() && left > end; ++used) {
            const std::uint32_t value = outputs[used] & mask;
            offsets[first - left] = value;
            left -= value < left;
        }
    }
    engine.take(used);
    return first - left;
}

}  // namespace

void Permutation::identity(std::size_t n) {
    holds_sources_ = false;
    table_.resize(n);
    std::iota(table_.begin(), table_.end(), Position{0});
}

// The draws of `draw_uniform`, a block of the engine at a time.
void Permutation::randomize(MersenneTwister& engine) {
    if (holds_sources_) resolve_();
    Offsets offsets;
    auto left = static_cast<Position>(table_.size());
    for (Position* at = table_.data(); left > 1;) {
        const std::size_t count = draw_offsets(engine, left, offsets);
        for (std::size_t k = 0; k < count; ++k)
            std::swap(at[k], at[k + offsets[k]]);
        at += count;
        left -= static_cast<Position>(count);
    }
}

void Permutation::resolve_() {
    std::vector<Position> targets(table_.size());
    for (Position i = 0; i < table_.size(); ++i)
        targets[table_[i]] = i;
    table_ = std::move(targets);
    holds_sources_ = false;
}

}  // namespace vela::permutation
