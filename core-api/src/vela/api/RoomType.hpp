#pragma once

#include <cstdint>

namespace vela::api {

/// Room type 0 to 3, carried to the decoder as it is.
enum class RoomType : std::uint32_t {};

}  // namespace vela::api
