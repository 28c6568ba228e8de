#pragma once

#include <vela/thread/details/Hold.hpp>

namespace vela::thread::details {

/// The slot that is being filled; its end makes the value ready for the other side.
template <typename T>
class Push : public Hold<T> {
public:
    using Hold<T>::Hold;
};

}  // namespace vela::thread::details
