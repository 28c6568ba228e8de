#pragma once

namespace vela::any {

/// What `vela::Any` sees of the value it holds.
class Interface {
public:
    virtual ~Interface() = default;

    /// Address of the held value.
    virtual void* get() = 0;
};

}  // namespace vela::any
