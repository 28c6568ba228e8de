#pragma once

namespace vela::codec::mux {

/// Writes record bits into a mask vector: an entry is cleared for a 0 and left for a 1.
///
/// One of the writers that the walks of `vela::codec::zvk::serialize` are made for: a writer has a
/// `Cursor` and a `put` that moves it on by one bit.
template <typename T>
struct SetAndIncrease {
    using Cursor = T*;

    static void put(Cursor& at, bool bit) {
        *at &= T{0} - T{bit};
        ++at;
    }
};

}  // namespace vela::codec::mux
