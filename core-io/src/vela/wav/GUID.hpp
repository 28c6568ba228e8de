#pragma once

#include <cstdint>
#include <vela/bnb/details/serialize.hpp>
#include <vela/file/Range.hpp>

namespace vela::wav {

/// The 16 bytes that name what is in an extensible file, as five little-endian numbers.
struct GUID {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::uint32_t data4 = 0;
    std::uint32_t data5 = 0;

    /// False if fewer than 16 bytes are left.
    [[nodiscard]] bool parse(file::Range& range);

    /// Appends the five fields to anything that `bnb::details::serialize` can write to.
    template <typename Sink>
    void serialize(Sink& sink) const {
        constexpr bnb::LittleEndian_tag order;
        bnb::details::serialize(sink, data1, bnb::UInt32_tag(), order);
        bnb::details::serialize(sink, data2, bnb::UInt16_tag(), order);
        bnb::details::serialize(sink, data3, bnb::UInt16_tag(), order);
        bnb::details::serialize(sink, data4, bnb::UInt32_tag(), order);
        bnb::details::serialize(sink, data5, bnb::UInt32_tag(), order);
    }

    bool operator==(const GUID&) const = default;
};

/// Integer PCM; on file 01 00 00 00 00 00 10 00 80 00 00 AA 00 38 9B 71.
[[nodiscard]] constexpr GUID KSDATAFORMAT_SUBTYPE_PCM() {
    return {0x00000001, 0x0000, 0x0010, 0xAA000080, 0x719B3800};
}

}  // namespace vela::wav
