#pragma once

#include <memory>
#include <vela/any/Erasure.hpp>
#include <vela/any/Interface.hpp>

namespace vela {

/// One value of any type, or nothing.
///
/// `get` answers for exactly the type that was set: numbers are not converted, so that a
/// `std::uint32_t` inside is no `int`.
class Any {
public:
    Any() = default;

    template <typename T>
    explicit Any(const T& value) {
        set(value);
    }

    template <typename T>
    void set(const T& value) {
        held_ = std::make_unique<any::Erasure<T>>(value);
    }

    /// The held value, or null if it is of another type or absent.
    template <typename T>
    [[nodiscard]] const T* get() const {
        auto* erasure = dynamic_cast<any::Erasure<T>*>(held_.get());
        return erasure ? static_cast<const T*>(erasure->get()) : nullptr;
    }

private:
    std::unique_ptr<any::Interface> held_;
};

}  // namespace vela
