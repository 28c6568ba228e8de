#pragma once

#include <cstddef>
#include <new>
#include <vector>
#include <vela/cache_line.hpp>

namespace vela::simd {

namespace details {

/// Memory that begins with a cache line.
template <typename T>
struct CacheLines {
    using value_type = T;

    CacheLines() = default;
    template <typename U>
    CacheLines(const CacheLines<U>& /*other*/) {}

    [[nodiscard]] T* allocate(std::size_t n) {
        return static_cast<T*>(::operator new(n * sizeof(T), line));
    }
    void deallocate(T* memory, std::size_t /*n*/) { ::operator delete(memory, line); }

    friend bool operator==(const CacheLines& /*a*/, const CacheLines& /*b*/) { return true; }

private:
    static constexpr std::align_val_t line{cache_line};
};

}  // namespace details

/// A vector for whole registers: the widest ones are as long as a cache line, and each that lies
/// across two takes twice as long to load.
template <typename T>
using Column = std::vector<T, details::CacheLines<T>>;

}  // namespace vela::simd
