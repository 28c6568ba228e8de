#pragma once

#include <cstdint>
#include <limits>

namespace vela::codec::mux {

/// Writes record bits into words of 32 bits, the first bit into the highest one.
///
/// One of the writers that the walks of `vela::codec::zvk::serialize` are made for: a writer has a
/// `Cursor` and a `put` that moves it on by some bits.
template <typename T>
struct SetAndIncrease {
    static_assert(std::numeric_limits<T>::digits == 32);

    /// Starts with the highest bit of a word.
    struct Cursor {
        T* word;
        std::uint64_t bits = 0;  // put so far, the last one lowest
        unsigned count = 0;      // of those that `word` does not hold yet, 31 at most
    };

    /// The low `width` bits of `value`, most significant first; the others must be 0.  Widths from
    /// 0 to 32.  A word stands from its last bit on; before, anything may be in it.
    static void put(Cursor& at, std::uint32_t value, unsigned width) {
        at.bits = at.bits << width | value;
        at.count += width;
        *at.word = static_cast<T>(at.bits >> at.count % 32);
        at.word += at.count / 32;
        at.count %= 32;
    }
};

}  // namespace vela::codec::mux
