#pragma once

#include <array>
#include <cstdint>
#include <vela/api/Channel.hpp>

namespace vela::codec::zvk {

/// The header of a record: 128 bits, its fields in the order in which they are written.
///
///     bit  width  field
///       0      8  frame_size_code       samples of the block / 16 - 1
///       8      1  reserved_flag_a
///       9      1  reserved_flag_b
///      10      1  encoded_flag          1: a record stands here
///      11      1  native_content
///      12      4  mix_bw_code           bits of the mix - 10
///      16      8  version_major         of the record
///      24      8  version_minor
///      32      1  dither_enabled
///      33      1  ix_coding_flag        0: Golomb-Rice indices, the only coding there is
///      34      2  ix_coding_mode        0, likewise
///      36      4  rice_k                1 to 7 with indices, else 0
///      40      8  error_center_ix       size class of the centers section
///      48      8  nr_instruction_lists  0 or 1
///      56      8  center_bits           of one center value, with its sign
///      64  4 x 8  channels              ids of the channels mixed here, 255 for an empty slot
///      96     32  (zeros)
struct MetaData {
    std::uint8_t frame_size_code = 0;
    bool reserved_flag_a = false;
    bool reserved_flag_b = false;
    bool encoded_flag = false;
    bool native_content = false;
    std::uint8_t mix_bw_code = 0;
    std::uint8_t version_major = 0;
    std::uint8_t version_minor = 0;
    bool dither_enabled = false;
    bool ix_coding_flag = false;
    std::uint8_t ix_coding_mode = 0;
    std::uint8_t rice_k = 0;
    std::uint8_t error_center_ix = 0;
    std::uint8_t nr_instruction_lists = 0;
    std::uint8_t center_bits = 0;
    std::array<api::Channel, 4> channels;
};

}  // namespace vela::codec::zvk
