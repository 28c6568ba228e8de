#pragma once

#include <optional>
#include <type_traits>
#include <utility>

namespace vela {

/// A slot that holds a `T` or nothing.
///
/// `set` ends the held value before the new one is made, so that a value whose end has an effect
/// (a plot that writes itself) is finished first.  If making the new value throws, the cache is
/// left empty.
template <typename T>
class Cache {
public:
    Cache() = default;
    Cache(const Cache&) = default;
    Cache& operator=(const Cache&) = default;
    ~Cache() = default;

    Cache(Cache&& other) noexcept(std::is_nothrow_move_constructible_v<T>) {
        *this = std::move(other);
    }
    Cache& operator=(Cache&& other) noexcept(std::is_nothrow_move_constructible_v<T>) {
        if (this == &other) return *this;
        if (other.has_value())
            set(std::move(*other));
        else
            reset();
        return *this;
    }

    T& set(const T& value) { return slot_.emplace(value); }
    T& set(T&& value) { return slot_.emplace(std::move(value)); }
    void reset() { slot_.reset(); }

    [[nodiscard]] bool has_value() const { return slot_.has_value(); }
    explicit operator bool() const { return has_value(); }

    /// Access; the cache must hold a value.
    T& operator*() { return *slot_; }
    const T& operator*() const { return *slot_; }
    T* operator->() { return &*slot_; }
    const T* operator->() const { return &*slot_; }

private:
    std::optional<T> slot_;
};

}  // namespace vela
