#pragma once

#include <vela/any/Interface.hpp>

namespace vela::any {

/// Holds one `T` behind the interface.
template <typename T>
class Erasure : public Interface {
public:
    explicit Erasure(const T& value) : value_(value) {}

    void* get() override { return &value_; }

private:
    T value_;
};

}  // namespace vela::any
