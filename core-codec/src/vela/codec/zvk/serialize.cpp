#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vela/codec/mux/Projector.hpp>
#include <vela/codec/mux/details/compute_crc.hpp>
#include <vela/codec/zvk/details/error_centers.hpp>
#include <vela/codec/zvk/serialize.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::codec::zvk {

namespace {

using Writer = mux::SetAndIncrease<unsigned>;
using Cursor = Writer::Cursor;

constexpr unsigned min_bitlines = 3;
constexpr unsigned max_bitlines = 16;

bool put_seed(Cursor& at, unsigned& bits_left, std::int32_t seed) {
    return details::put<Writer>(at, bits_left, static_cast<std::uint32_t>(seed), 32);
}

bool put_seeds(Cursor& at, unsigned& bits_left, const std::vector<std::int32_t>& seeds) {
    if (seeds.size() == 2)
        return put_seed(at, bits_left, seeds[1]) && put_seed(at, bits_left, seeds[0]);
    if (seeds.size() != 5) return false;
    return std::ranges::all_of(seeds,
                               [&](std::int32_t seed) { return put_seed(at, bits_left, seed); });
}

bool put_center(Cursor& at, unsigned& bits_left, std::int32_t value, unsigned center_bits) {
    const auto magnitude = static_cast<std::uint32_t>(numeric::wrap_abs(value));
    const unsigned width = std::min(center_bits - 1, 32u);
    return details::put<Writer>(at, bits_left, value < 0, 1) &&
           details::put_run<Writer>(at, bits_left, false, center_bits - 1 - width) &&
           details::put<Writer>(at, bits_left, magnitude, width);
}

/// The slots of one element of the centers.
template <std::size_t D>
bool put_slots(Cursor& at, unsigned& bits_left, const std::vector<std::array<int, D>>& centers,
               std::size_t element, const MetaData& header) {
    const auto nr_slots = details::nr_error_centers_per_index(header.error_center_ix);
    if (centers.size() > nr_slots) return false;
    if (!centers.empty() && header.center_bits < 2) return false;
    for (const auto& center : centers)
        if (!put_center(at, bits_left, center[element], header.center_bits)) return false;

    const auto unused = (nr_slots - static_cast<unsigned>(centers.size())) * header.center_bits;
    return details::put_run<Writer>(at, bits_left, true, unused);
}

template <std::size_t D>
bool put_centers(Cursor& at, unsigned& bits_left, const std::vector<std::array<int, D>>& centers,
                 const MetaData& header) {
    for (std::size_t element = 0; element < D; ++element)
        if (!put_slots(at, bits_left, centers, element, header)) return false;
    return true;
}

constexpr unsigned max_k = 7;

/// Each of the numbers of `max_k` bits with its bits the other way round.
constexpr auto reversed = [] {
    std::array<std::uint8_t, 1u << max_k> all{};
    for (unsigned i = 0; i < all.size(); ++i)
        for (unsigned bit = 0; bit < max_k; ++bit)
            all[i] |= static_cast<std::uint8_t>((i >> bit & 1u) << (max_k - 1 - bit));
    return all;
}();

bool put_ix(Cursor& at, unsigned& bits_left, std::uint64_t ix, unsigned k) {
    constexpr unsigned piece = 32 - 1 - max_k;  // of a prefix, if a code is longer than a put
    std::uint64_t width = (ix >> k) + 1 + k;
    if (bits_left < width) return false;
    bits_left -= static_cast<unsigned>(width);
    for (; width > 32; width -= piece)
        Writer::put(at, (1u << piece) - 1, piece);

    const auto prefix = static_cast<std::uint32_t>((std::uint64_t{1} << width) - (2u << k));
    const std::uint32_t low_bits = reversed[ix % reversed.size()] >> (max_k - k);
    Writer::put(at, prefix | low_bits, static_cast<unsigned>(width));
    return true;
}

bool put_ixs(Cursor& at, unsigned& bits_left, const std::vector<std::uint64_t>& ixs,
             const MetaData& header) {
    if (header.ix_coding_mode != 0 || header.ix_coding_flag) return false;
    if (header.rice_k < 1 || header.rice_k > max_k) return false;
    // Nobody else has the addresses of these, so that they stay in registers.
    Cursor to = at;
    unsigned left = bits_left;
    for (const std::uint64_t ix : ixs)
        if (!put_ix(to, left, ix, header.rice_k)) return false;
    at = to;
    bits_left = left;
    return true;
}

/// All that stands behind the CRC.
bool put_record(Cursor at, unsigned bits_left, const ZVK& record) {
    const MetaData& header = record;
    if (!serialize<Writer>(at, bits_left, header)) return false;
    if (record.mix_seeds && !record.mix_seeds->empty() &&
        !put_seeds(at, bits_left, *record.mix_seeds))
        return false;
    if (!serialize<Writer>(at, bits_left, record.instructions)) return false;
    if (record.centers_1d && !put_centers(at, bits_left, *record.centers_1d, header)) return false;
    if (record.centers_2d && !put_centers(at, bits_left, *record.centers_2d, header)) return false;
    if (record.ixs && !put_ixs(at, bits_left, *record.ixs, header)) return false;
    Writer::put(at, 0, 32);  // so that the last word stands, too
    return true;
}

}  // namespace

template <unsigned sample_width, unsigned nr_bitlines>
bool serialize(Range<int*> samples, const ZVK& record) {
    using Projector = mux::Projector<unsigned, nr_bitlines>;
    const unsigned nr_lists = record.instructions.empty() ? 0 : 1;
    if (nr_lists != record.nr_instruction_lists) return false;

    Projector projector(samples.size());
    if (!put_record(projector.body(), projector.body_bits(), record)) return false;
    if (!projector.project(samples)) return false;

    unsigned long crc = 0;
    if (!mux::details::compute_crc(sample_width, crc, samples)) return false;
    return projector.project_crc(samples, static_cast<std::uint16_t>(crc));
}

template bool serialize<24, 3>(Range<int*>, const ZVK&);
template bool serialize<24, 4>(Range<int*>, const ZVK&);
template bool serialize<24, 5>(Range<int*>, const ZVK&);
template bool serialize<24, 6>(Range<int*>, const ZVK&);
template bool serialize<24, 7>(Range<int*>, const ZVK&);
template bool serialize<24, 8>(Range<int*>, const ZVK&);
template bool serialize<24, 9>(Range<int*>, const ZVK&);
template bool serialize<24, 10>(Range<int*>, const ZVK&);
template bool serialize<24, 11>(Range<int*>, const ZVK&);
template bool serialize<24, 12>(Range<int*>, const ZVK&);
template bool serialize<24, 13>(Range<int*>, const ZVK&);
template bool serialize<24, 14>(Range<int*>, const ZVK&);
template bool serialize<24, 15>(Range<int*>, const ZVK&);
template bool serialize<24, 16>(Range<int*>, const ZVK&);

namespace {

using Serialize = bool (*)(Range<int*>, const ZVK&);

template <unsigned... ix>
constexpr std::array<Serialize, sizeof...(ix)> by_bitlines(std::integer_sequence<unsigned, ix...>) {
    return {&serialize<24, min_bitlines + ix>...};
}

}  // namespace

template <>
bool serialize<24>(Range<int*> samples, const ZVK& record, unsigned nr_bitlines) {
    constexpr auto writers =
        by_bitlines(std::make_integer_sequence<unsigned, max_bitlines - min_bitlines + 1>());
    if (nr_bitlines < min_bitlines || nr_bitlines > max_bitlines) return false;
    return writers[nr_bitlines - min_bitlines](samples, record);
}

}  // namespace vela::codec::zvk
