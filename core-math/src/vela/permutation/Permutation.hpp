#pragma once

#include <array>
#include <cstddef>
#include <limits>
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
///     target   2 0 1 3      cycles   0 2 1 0 | 3 3      each is closed by its own start
///     input    a b c d      output   b c a d
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
    static constexpr auto unset = std::numeric_limits<unsigned long>::max();

    struct Info {
        unsigned long target;                 // where the element at this position moves
        mutable unsigned long cycle = unset;  // which cycle the position belongs to
        mutable unsigned long pos = 0;        // its place there
    };
    using Cycle = std::vector<unsigned long>;

    void compute_cycles_() const;
    template <typename Load, typename Store>
    bool shuffle_(Load load, Store store) const;

    std::vector<Info> infos_;
    mutable std::vector<Cycle> cycles_;  // empty until they are computed
};

template <typename Engine>
void Permutation::randomize(Engine& engine) {
    for (std::size_t i = 0; i < infos_.size(); ++i)
        std::swap(infos_[i].target, infos_[draw_uniform(engine, i, infos_.size() - 1)].target);
    cycles_.clear();
}

template <typename T>
bool Permutation::shuffle(std::vector<T>& elements) const {
    if (elements.size() != infos_.size()) return false;
    return shuffle_([&](std::size_t i) { return elements[i]; },
                    [&](std::size_t i, const T& element) { elements[i] = element; });
}

template <std::size_t N, typename T>
bool Permutation::shuffle(const Range<segment::Iterator<N, T>>& elements) const {
    if (elements.size() != infos_.size()) return false;
    const auto at = [first = elements.begin()](std::size_t i) {
        return first + static_cast<std::ptrdiff_t>(i);
    };
    return shuffle_([&](std::size_t i) { return *at(i); },
                    [&](std::size_t i, const std::array<T, N>& element) { at(i).assign(element); });
}

// Walks each cycle backwards, so that one element in hand is enough.
template <typename Load, typename Store>
bool Permutation::shuffle_(Load load, Store store) const {
    compute_cycles_();
    for (const Cycle& cycle : cycles_) {
        if (cycle.size() < 2) return false;
        if (cycle.size() == 2) continue;
        const auto first = load(cycle.front());
        for (std::size_t j = cycle.size() - 1; j > 1; --j)
            store(cycle[j], load(cycle[j - 1]));
        store(cycle[1], first);
    }
    return true;
}

}  // namespace vela::permutation
