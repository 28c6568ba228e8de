#pragma once

#include <vela/Range.hpp>
#include <vela/codec/zvk/ZVK.hpp>
#include <vela/codec/zvk/serialize_instructions.hpp>
#include <vela/codec/zvk/serialize_meta_data.hpp>

namespace vela::codec::zvk {

/// Writes a record into the bit-lines of a block, CRC included.  In the order of its bits, which
/// `vela::codec::mux::Projector` maps to samples and lines:
///
///     record   sync crc header [seeds] [list] [centers] [ixs] padding
///     sync     16 x 1
///     crc      16 bits, over the finished block (`mux::details::compute_crc`)
///     header   128 bits, see `MetaData`
///     seeds    two channels:    seed[1] seed[0]                              2 x 32 bits
///              three channels:  seed[0] seed[1] seed[2] seed[3] seed[4]      5 x 32 bits
///     list     see `serialize` of instructions
///     centers  two channels:    slots of element 0
///              three channels:  slots of element 0, then slots of element 1
///     slots    S values in cluster order; an unused slot is all ones.  S is that of the size
///              class in the header (`details::nr_error_centers_per_index`)
///     value    sign (1: below 0), magnitude in center_bits - 1 bits
///     ixs      one code per sample, k being rice_k of the header:
///              q = ix >> k ones, a 0, the k low bits of ix
///     padding  zeros, up to the capacity of the block
///
/// Everything is written most significant bit first but the k low bits of an index, which run the
/// other way.  Seeds are two's complement.  With k = 2, index 9 (q = 2, low bits 01) is 1 1 0 1 0.
///
/// `samples` holds the mix shifted left by `nr_bitlines`: its low bits must be 0, since bits are
/// only set.  False, with the samples untouched, if
/// - `nr_bitlines` is not in 3 .. 16, or the block is below 16 samples;
/// - `nr_instruction_lists` does not say whether there are instructions, or one cannot be written;
/// - seeds are neither 0, 2 nor 5;
/// - there are more centers than slots, or a center has fewer than 2 bits;
/// - there are indices and their coding is not 0 or `rice_k` is not in 1 .. 7;
/// - a section does not fit.
///
/// The sample width is 24 bits; there is no other.  Safe on several threads at once.
template <unsigned sample_width>
[[nodiscard]] bool serialize(Range<int*> samples, const ZVK& record, unsigned nr_bitlines);

/// The same for a count of bit-lines that is known when this is compiled.
template <unsigned sample_width, unsigned nr_bitlines>
[[nodiscard]] bool serialize(Range<int*> samples, const ZVK& record);

template <>
bool serialize<24>(Range<int*> samples, const ZVK& record, unsigned nr_bitlines);

}  // namespace vela::codec::zvk
