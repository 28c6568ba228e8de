#pragma once

#include <compare>
#include <cstdint>
#include <vela/downmix/Movement.hpp>

namespace vela::downmix::tdl {

/// Which movement, in which dimensions: the key of a gain table.  Bit d of `dimensions` stands for
/// dimension d, 1 to 3.
struct Config {
    Movement movement = Movement::None;
    std::uint32_t dimensions = 0;

    /// By movement, then by dimensions.
    auto operator<=>(const Config&) const = default;
};

}  // namespace vela::downmix::tdl
