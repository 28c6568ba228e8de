#pragma once

#include <cstdint>
#include <vela/codec/zvk/MetaData.hpp>
#include <vela/codec/zvk/details/put.hpp>

namespace vela::codec::zvk {

/// Writes the header, 128 bits laid out as at `MetaData`, through `Writer` (a `Cursor` and a
/// `put(Cursor&, value, width)` that moves it on).
///
/// `bits_left` goes down with what is written; false, at the first field that does not fit.
template <typename Writer>
[[nodiscard]] bool serialize(typename Writer::Cursor& at, unsigned& bits_left,
                             const MetaData& header) {
    constexpr std::uint32_t no_channel = 255;
    struct Field {
        std::uint32_t value;
        unsigned width;
    };
    const Field fields[] = {
        {header.frame_size_code, 8}, {header.reserved_flag_a, 1},      {header.reserved_flag_b, 1},
        {header.encoded_flag, 1},    {header.native_content, 1},       {header.mix_bw_code, 4},
        {header.version_major, 8},   {header.version_minor, 8},        {header.dither_enabled, 1},
        {header.ix_coding_flag, 1},  {header.ix_coding_mode, 2},       {header.rice_k, 4},
        {header.error_center_ix, 8}, {header.nr_instruction_lists, 8}, {header.center_bits, 8},
    };
    for (const Field& field : fields)
        if (!details::put<Writer>(at, bits_left, field.value, field.width)) return false;
    for (const api::Channel& channel : header.channels) {
        const std::uint32_t id = channel.valid() ? channel.id() : no_channel;
        if (!details::put<Writer>(at, bits_left, id, 8)) return false;
    }
    return details::put<Writer>(at, bits_left, 0, 32);
}

}  // namespace vela::codec::zvk
