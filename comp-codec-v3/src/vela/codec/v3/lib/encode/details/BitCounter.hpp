#pragma once

namespace vela::codec::v3::encode::details {

/// A writer of record bits that only counts them.
struct BitCounter {
    using Cursor = unsigned;

    static void put(Cursor& count, bool) { ++count; }
};

}  // namespace vela::codec::v3::encode::details
