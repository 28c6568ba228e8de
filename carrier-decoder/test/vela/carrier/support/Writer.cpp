#include "Writer.hpp"

#include <cstddef>
#include <cstdlib>

namespace vela::carrier::support {

namespace {

void append_centers(Bits& bits, const Record& record, unsigned element) {
    for (const auto& center : record.centers) {
        const int x = center[element];
        bits.push_back(x < 0);
        append(bits, static_cast<std::uint64_t>(std::abs(x)), record.center_bits - 1);
    }
    const std::size_t unused = record.nr_slots - record.centers.size();
    bits.insert(bits.end(), unused * record.center_bits, true);
}

void append_ix(Bits& bits, std::uint32_t ix, unsigned k) {
    bits.insert(bits.end(), ix >> k, true);
    bits.push_back(false);
    for (unsigned place = 0; place < k; ++place)
        bits.push_back((ix >> place & 1) != 0);
}

/// Division of the message, 16 zeros behind it, by x^16 + x^12 + x^5 + 1.
std::uint32_t remainder_of(Bits message) {
    const std::size_t length = message.size();
    message.insert(message.end(), 16, false);
    for (std::size_t i = 0; i < length; ++i) {
        if (!message[i]) continue;
        for (const std::size_t power : {0u, 4u, 11u, 16u})
            message[i + power].flip();
    }
    std::uint32_t out = 0;
    for (std::size_t i = length; i < message.size(); ++i)
        out = out << 1 | (message[i] ? 1u : 0u);
    return out;
}

}  // namespace

void append(Bits& bits, std::uint64_t value, unsigned width) {
    for (unsigned bit = width; bit-- > 0;)
        bits.push_back((value >> bit & 1) != 0);
}

Bits Record::bits() const {
    Bits out;
    append(out, sync, 16);
    append(out, 0, 16);
    append(out, frame_size_code, 8);
    append(out, reserved_flags, 2);
    append(out, encoded, 1);
    append(out, native_content, 1);
    append(out, mix_bw_code, 4);
    append(out, version_major, 8);
    append(out, version_minor, 8);
    append(out, dither, 1);
    append(out, ix_coding, 3);
    append(out, rice_k, 4);
    append(out, error_center_ix, 8);
    append(out, nr_instruction_lists, 8);
    append(out, center_bits, 8);
    for (const std::uint32_t channel : channels)
        append(out, channel, 8);
    append(out, reserved, 32);
    std::vector<int> in_order = seeds;
    if (seeds.size() == 2) in_order = {seeds[1], seeds[0]};
    for (const int seed : in_order)
        append(out, static_cast<std::uint32_t>(seed), 32);
    out.insert(out.end(), instructions.begin(), instructions.end());
    for (unsigned element = 0; element < dimensions; ++element)
        append_centers(out, *this, element);
    for (const std::uint32_t ix : ixs)
        append_ix(out, ix, rice_k);
    return out;
}

std::vector<std::array<std::size_t, 2>> places(std::size_t nr_samples, unsigned nr_bitlines) {
    std::vector<std::array<std::size_t, 2>> out;
    for (std::size_t line = 0; line < 3; ++line) {
        for (std::size_t t = 0; t < 16; ++t)
            out.push_back({t, line});
    }
    for (std::size_t t = 0; t < nr_samples; ++t) {
        const std::size_t lowest = t < 16 ? 3 : (t % 16 == 0 ? 1 : 0);
        for (std::size_t line = nr_bitlines; line-- > lowest;)
            out.push_back({t, line});
    }
    return out;
}

std::vector<int> put(const Bits& record, const std::vector<int>& mix, unsigned nr_bitlines) {
    std::vector<int> samples;
    for (const int x : mix)
        samples.push_back(x * (1 << nr_bitlines));
    const auto map = places(samples.size(), nr_bitlines);
    for (std::size_t i = 0; i < record.size() && i < map.size(); ++i) {
        if (record[i]) samples[map[i][0]] |= 1 << map[i][1];
    }
    seal(samples);
    return samples;
}

void seal(std::vector<int>& samples) {
    Bits message;
    for (std::size_t t = 0; t < samples.size(); ++t) {
        if (t < 16) samples[t] &= ~2;
        for (const int shift : {0, 8, 16}) {
            append(message, static_cast<std::uint32_t>(samples[t]) >> shift & 0xFFu, 8);
        }
    }
    const std::uint32_t crc = ~remainder_of(std::move(message)) & 0xFFFFu;
    for (std::size_t t = 0; t < 16; ++t) {
        if ((crc >> (15 - t) & 1u) != 0) samples[t] |= 2;
    }
}

}  // namespace vela::carrier::support
