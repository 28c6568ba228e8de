#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>
#include <vela/carrier/Block.hpp>

namespace vela::carrier {

/// Decodes a whole carrier channel, block by block; all blocks have one size.
///
/// Shape:  `samples` holds whole blocks of `frame_size` samples, at least one.
/// Errors: false, with the number of the block and what is wrong with it in `why`; `out` then
///         holds the blocks before it.
[[nodiscard]] bool decode_carrier(std::vector<Block>& out, std::string& why,
                                  std::span<const int> samples, std::size_t frame_size);

/// The block size of a carrier, from its first block.  A size of 992 and one of 1000 have the same
/// code; the one that decodes is the answer.  False if the first block does not decode.
[[nodiscard]] bool find_frame_size(std::size_t& out, std::string& why,
                                   std::span<const int> samples);

/// The channels of all blocks, each put together over the whole stretch of time; where a channel
/// is missing in a block, it is silent.  The attenuation of single channels stays in force.
[[nodiscard]] Channels join(std::span<const Block> blocks);

}  // namespace vela::carrier
