#pragma once

#include <cstdint>

namespace vela::api {

/// A half-open range on the stream's time line, in samples per channel from the start of the input.
struct SampleSpan {
    std::int64_t start = 0;
    std::int64_t stop = 0;

    [[nodiscard]] std::int64_t size() const { return stop - start; }
    bool operator==(const SampleSpan&) const = default;
};

}  // namespace vela::api
