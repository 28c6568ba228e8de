#pragma once

#include <cstdint>
#include <vector>

namespace vela::wav::details {

/// The samples of one block of a file.
///
/// Samples are right-justified and sign-extended at the file's own width: 24-bit audio lies in
/// -8388608..8388607 whatever `T` could hold.
template <typename T>
struct BlockInfo {
    /// Half-open place of the block on the file's time line, in samples per channel.
    std::uint64_t start = 0;
    std::uint64_t stop = 0;
    /// One vector per channel of the file, each of `stop - start` samples.
    std::vector<std::vector<T>> channels;
};

}  // namespace vela::wav::details
