#pragma once

#include <cstdint>

namespace vela::codec {

/// The version and the build that this program prints and sends in its records.  The build is a
/// hexadecimal number.
inline constexpr const char* version_text = "3.2.1";
inline constexpr const char* build_hash_text = "dca34e54";

/// A version as it travels in a record: a byte for each of its three numbers.
struct Version {
    std::uint8_t major = 0;
    std::uint8_t minor = 0;
    std::uint8_t patch = 0;

    /// The 24-bit operand of opcode `CodecVersion`: major in the most significant byte.
    [[nodiscard]] constexpr std::uint32_t packed() const {
        return static_cast<std::uint32_t>(major) << 16 | static_cast<std::uint32_t>(minor) << 8 |
               patch;
    }

    bool operator==(const Version&) const = default;
};

}  // namespace vela::codec
