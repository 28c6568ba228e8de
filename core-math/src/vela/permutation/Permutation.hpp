#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>
#include <vela/Range.hpp>
#include <vela/permutation/draw_uniform.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::permutation {

/// A reordering of n elements, done in place: output[target[i]] = input[i].
///
/// Its cycles are worked out when they are first needed and then kept.
///
///     target   2 0 1 3      cycles   0 2 1 0      each is closed by its own start; 3 stays
///     input    a b c d      output   b c a d
///
/// One is made for every learner, so both are flat: 1024 positions take 7 us from drawing to the
/// second shuffle, and 21 us with a vector for each cycle.
///
/// Threads:  one at a time, `shuffle` included.
class Permutation {
public:
    /// Becomes the permutation of `n` elements that moves nothing.
    void identity(std::size_t n);

    /// Swaps each target, first to last, with one at a random position from its own on: all orders
    /// are equally likely.  `engine` gives 32 random bits a call and is not used for the last
    /// position.
    template <typename Engine>
    void randomize(Engine& engine);

    /// Becomes the permutation that undoes this one.
    void invert();

    /// Moves the elements in place.  False, with nothing moved, if their count differs from n.
    template <typename T>
    [[nodiscard]] bool shuffle(std::vector<T>& elements) const;
    template <std::size_t N, typename T>
    [[nodiscard]] bool shuffle(const Range<segment::Iterator<N, T>>& elements) const;

private:
    using Position = std::uint32_t;

    void compute_cycles_() const;
    template <typename Load, typename Store>
    void shuffle_(Load load, Store store) const;

    std::vector<Position> targets_;  // where the element at a position moves
    mutable std::vector<Position>
        cycles_;  // one closed cycle behind the other, fixed points left out
    mutable bool has_cycles_ = false;
};

template <typename Engine>
void Permutation::randomize(Engine& engine) {
    const std::size_t n = targets_.size();
    for (std::size_t i = 0; i < n; ++i)
        std::swap(targets_[i], targets_[draw_uniform(engine, i, n - 1)]);
    has_cycles_ = false;
}

template <typename T>
bool Permutation::shuffle(std::vector<T>& elements) const {
    if (elements.size() != targets_.size()) return false;
    shuffle_([&](std::size_t i) { return elements[i]; },
             [&](std::size_t i, const T& element) { elements[i] = element; });
    return true;
}

template <std::size_t N, typename T>
bool Permutation::shuffle(const Range<segment::Iterator<N, T>>& elements) const {
    if (elements.size() != targets_.size()) return false;
    const auto at = [first = elements.begin()](std::size_t i) {
        return first + static_cast<std::ptrdiff_t>(i);
    };
    shuffle_([&](std::size_t i) { return *at(i); },
             [&](std::size_t i, const std::array<T, N>& element) { at(i).assign(element); });
    return true;
}

// Walks each cycle backwards, so that one element in hand is enough.
template <typename Load, typename Store>
void Permutation::shuffle_(Load load, Store store) const {
    compute_cycles_();
    for (std::size_t end = cycles_.size(); end > 0;) {
        std::size_t at = end - 1;
        const Position start = cycles_[at];
        const auto first = load(start);
        for (--at; cycles_[at] != start; --at)
            store(cycles_[at + 1], load(cycles_[at]));
        store(cycles_[at + 1], first);
        end = at;
    }
}

}  // namespace vela::permutation
