#pragma once

#include <array>
#include <cstddef>

namespace vela::segment {

/// Walks a contiguous vector of `T` in steps of `N`, one array of `N` values at a time.
///
///     values   a b | c d | e f        N = 2: three elements
///
/// The vector must outlive the iterator and hold a multiple of `N` values.
template <std::size_t N, typename T>
class Iterator {
public:
    static constexpr std::size_t dimension = N;
    using Element = std::array<T, N>;

    Iterator() = default;
    explicit Iterator(T* at) : at_(at) {}

    [[nodiscard]] Element operator*() const {
        Element element;
        for (std::size_t i = 0; i < N; ++i)
            element[i] = at_[i];
        return element;
    }

    /// Overwrites the element under the iterator.
    void assign(const Element& element) const {
        for (std::size_t i = 0; i < N; ++i)
            at_[i] = element[i];
    }

    Iterator& operator++() {
        at_ += N;
        return *this;
    }
    Iterator operator+(std::ptrdiff_t steps) const {
        return Iterator(at_ + steps * static_cast<std::ptrdiff_t>(N));
    }
    std::ptrdiff_t operator-(const Iterator& other) const {
        return (at_ - other.at_) / static_cast<std::ptrdiff_t>(N);
    }

    /// First of the N values.
    [[nodiscard]] T* data() const { return at_; }

    bool operator==(const Iterator&) const = default;

private:
    T* at_ = nullptr;
};

}  // namespace vela::segment
