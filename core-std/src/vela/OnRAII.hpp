#pragma once

#include <utility>

namespace vela {

/// Runs a callable on every way out of a scope.
template <typename F>
class OnRAII {
public:
    explicit OnRAII(F on_exit) : on_exit_(std::move(on_exit)) {}
    OnRAII(const OnRAII&) = delete;
    OnRAII& operator=(const OnRAII&) = delete;
    ~OnRAII() { on_exit_(); }

private:
    F on_exit_;
};

}  // namespace vela
