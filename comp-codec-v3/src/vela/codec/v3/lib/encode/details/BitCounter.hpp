#pragma once

#include <cstdint>

namespace vela::codec::v3::encode::details {

/// A writer of record bits that only counts them.
struct BitCounter {
    using Cursor = unsigned;

    static void put(Cursor& count, std::uint32_t, unsigned width) { count += width; }
};

}  // namespace vela::codec::v3::encode::details
