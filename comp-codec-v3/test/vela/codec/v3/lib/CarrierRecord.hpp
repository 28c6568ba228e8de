#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>
#include <vela/dmol/Opcode.hpp>

/// What a decoder reads from the low bits of one block of a carrier, up to the end of its
/// instructions.
namespace vela::codec::v3 {

class CarrierRecord {
public:
    struct Instruction {
        unsigned opcode = 0;
        std::uint32_t arg2 = 0;
        std::uint32_t arg3 = 0;

        bool operator==(const Instruction&) const = default;
    };

    unsigned nr_bitlines = 0;
    bool native_content = false;
    bool dither_enabled = false;
    std::vector<unsigned> channels;
    std::vector<Instruction> instructions;

    explicit CarrierRecord(std::span<const int> samples) : nr_bitlines(bitlines_of(samples)) {
        gather_bits_(samples);
        at_ = 32 + 11;  // sync word, checksum, size, three flags
        native_content = pop_(1) != 0;
        pop_(4 + 8 + 8);
        dither_enabled = pop_(1) != 0;
        pop_(1 + 2 + 4 + 8);
        const unsigned nr_lists = pop_(8);
        pop_(8);
        for (int slot = 0; slot < 4; ++slot)
            if (const unsigned id = pop_(8); id != 255) channels.push_back(id);
        pop_(32);
        at_ += channels.size() == 3 ? 5 * 32u : channels.size() == 2 ? 2 * 32u : 0u;
        if (nr_lists == 1 && pop_(8) == 1) pop_instructions_();
    }

    [[nodiscard]] std::vector<unsigned> opcodes() const {
        std::vector<unsigned> opcodes;
        for (const auto& instruction : instructions)
            opcodes.push_back(instruction.opcode);
        return opcodes;
    }

    /// The operand of the first instruction of that opcode.
    [[nodiscard]] std::optional<std::uint32_t> arg2_of(unsigned opcode) const {
        const auto at = std::ranges::find(instructions, opcode, &Instruction::opcode);
        return at == instructions.end() ? std::nullopt : std::optional(at->arg2);
    }

private:
    // Line 2 of the first sixteen samples holds the first half-word of the header, whatever the
    // count of bit-lines; its last four bits tell the width of the mix.
    static unsigned bitlines_of(std::span<const int> samples) {
        unsigned code = 0;
        for (std::size_t t = 12; t < 16; ++t)
            code = code << 1 | (static_cast<unsigned>(samples[t]) >> 2 & 1u);
        return 24 - (code + 10);
    }

    void gather_bits_(std::span<const int> samples) {
        for (unsigned line = 0; line < 3; ++line)
            for (std::size_t t = 0; t < 16; ++t)
                gather_(samples[t], line);
        for (std::size_t t = 0; t < 16; ++t)
            for (unsigned line = nr_bitlines; line-- > 3;)
                gather_(samples[t], line);
        for (std::size_t t = 16; t < samples.size(); ++t)
            for (unsigned line = nr_bitlines; line-- > (t % 16 == 0 ? 1u : 0u);)
                gather_(samples[t], line);
    }

    void gather_(int sample, unsigned line) {
        bits_.push_back((static_cast<unsigned>(sample) >> line & 1u) != 0);
    }

    std::uint32_t pop_(unsigned width) {
        std::uint32_t value = 0;
        for (unsigned i = 0; i < width; ++i)
            value = value << 1 | static_cast<std::uint32_t>(bits_.at(at_++));
        return value;
    }

    void pop_instructions_() {
        while (const unsigned opcode = pop_(8)) {
            const auto payload = dmol::payload_of(dmol::Opcode(opcode)).value();
            const std::uint32_t arg2 = pop_(payload.arg2_bits);
            instructions.push_back({opcode, arg2, pop_(payload.arg3_bits)});
        }
    }

    std::vector<bool> bits_;
    std::size_t at_ = 0;
};

}  // namespace vela::codec::v3
