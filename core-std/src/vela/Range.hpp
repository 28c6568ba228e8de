#pragma once

#include <cstddef>
#include <utility>

namespace vela {

/// A pair of iterators that knows whether it was ever set.
///
/// A default range is not valid: it has length 0 and its iterators must not be looked at.
template <typename It>
class Range {
public:
    Range() = default;
    Range(It first, It last) : begin_(std::move(first)), end_(std::move(last)), valid_(true) {}

    [[nodiscard]] bool valid() const { return valid_; }
    [[nodiscard]] std::size_t size() const {
        return valid_ ? static_cast<std::size_t>(end_ - begin_) : 0;
    }
    [[nodiscard]] bool empty() const { return size() == 0; }

    It& begin() { return begin_; }
    It& end() { return end_; }
    const It& begin() const { return begin_; }
    const It& end() const { return end_; }

private:
    It begin_{};
    It end_{};
    bool valid_ = false;
};

}  // namespace vela
