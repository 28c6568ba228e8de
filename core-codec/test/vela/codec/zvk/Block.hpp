#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <vela/codec/mux/BitMap.hpp>
#include <vela/codec/zvk/serialize.hpp>

namespace vela::codec::zvk::test {

inline constexpr std::size_t list_at = 160;  // behind sync word, CRC and header

inline Range<int*> range_of(std::vector<int>& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

inline dmol::Instruction layout_9_1() {
    dmol::Instruction instruction;
    instruction.set_opcode(dmol::Opcode::InputLayout);
    instruction.arg2 = 30;
    return instruction;
}

/// A record with its sections, and a silent block to write it into.
struct Block {
    ZVK record;
    std::vector<std::int32_t> seeds;
    ZVK::Centers1 centers_1d;
    ZVK::Centers2 centers_2d;
    std::vector<std::uint64_t> ixs;
    std::vector<int> samples;

    explicit Block(std::size_t nr_samples) : samples(nr_samples) {
        EXPECT_TRUE(record.set_frame_size(nr_samples));
        record.mix_seeds = &seeds;
    }
    bool write(unsigned nr_lines) { return serialize<24>(range_of(samples), record, nr_lines); }
    /// The bits behind the header, once written.
    std::string body(unsigned nr_lines) {
        EXPECT_TRUE(write(nr_lines));
        return mux::test::record_bits(samples, nr_lines).substr(list_at);
    }
    bool fails_untouched(unsigned nr_lines) {
        const std::vector<int> before = samples;
        return !write(nr_lines) && samples == before;
    }
};

/// `text`, and zeros up to `size`.
inline std::string padded(std::string text, std::size_t size) {
    text.resize(size, '0');
    return text;
}

}  // namespace vela::codec::zvk::test
