#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>
#include <vela/Range.hpp>
#include <vela/permutation/MersenneTwister.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::permutation {

/// A reordering of n elements, n below 2^32: output[target[i]] = input[i].
///
///     target   2 0 1 3      input    a b c d      output   b c a d
///
/// One is made for every learner: 1024 positions take 3 us from drawing to the second shuffle.
/// Elements are moved out of a copy, since finding the cycles that would spare it takes as long
/// again as all of this; each thread keeps the memory of its copies.
///
/// Threads:  any number may `shuffle` at once.
class Permutation {
public:
    /// Becomes the permutation of `n` elements that moves nothing.
    void identity(std::size_t n);

    /// Swaps each target, first to last, with one at a random position from its own on: all orders
    /// are equally likely.  Takes the outputs of `engine` that `draw_uniform` would take for each
    /// position, none for the last.
    void randomize(MersenneTwister& engine);

    /// Becomes the permutation that undoes this one.  Takes no time: the table stays and is read
    /// the other way round.
    void invert() { holds_sources_ = !holds_sources_; }

    /// Moves the elements.  False, with nothing moved, if their count differs from n.
    template <typename T>
    [[nodiscard]] bool shuffle(std::vector<T>& elements) const;
    template <std::size_t N, typename T>
    [[nodiscard]] bool shuffle(const Range<segment::Iterator<N, T>>& elements) const;

private:
    using Position = std::uint32_t;

    void resolve_();
    template <std::size_t N, typename T>
    void move_(T* values) const;

    std::vector<Position> table_;  // where the element at a position moves, or comes from
    bool holds_sources_ = false;
};

template <typename T>
bool Permutation::shuffle(std::vector<T>& elements) const {
    if (elements.size() != table_.size()) return false;
    move_<1>(elements.data());
    return true;
}

template <std::size_t N, typename T>
bool Permutation::shuffle(const Range<segment::Iterator<N, T>>& elements) const {
    if (elements.size() != table_.size()) return false;
    move_<N>(elements.begin().data());
    return true;
}

// `values` holds N for each element.
template <std::size_t N, typename T>
void Permutation::move_(T* values) const {
    static thread_local std::vector<T> inputs;
    inputs.assign(values, values + N * table_.size());
    const T* const input = inputs.data();
    const std::span<const Position> table = table_;
    if (holds_sources_)
        for (std::size_t i = 0; i < table.size(); ++i)
            std::copy_n(input + N * table[i], N, values + N * i);
    else
        for (std::size_t i = 0; i < table.size(); ++i)
            std::copy_n(input + N * i, N, values + N * table[i]);
}

}  // namespace vela::permutation
