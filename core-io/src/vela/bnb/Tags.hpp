#pragma once

/// Binary numbers: tags that choose, when compiled, how an integer lies in bytes.
namespace vela::bnb {

struct Int8_tag {};
struct Int16_tag {};
struct Int24_tag {};
struct Int32_tag {};
struct UInt16_tag {};
struct UInt24_tag {};
struct UInt32_tag {};

/// Least significant byte first.
struct LittleEndian_tag {};

}  // namespace vela::bnb
