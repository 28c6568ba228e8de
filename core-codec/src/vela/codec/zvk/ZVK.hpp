#pragma once

#include <array>
#include <cstdint>
#include <vector>
#include <vela/codec/zvk/MetaData.hpp>
#include <vela/dmol/Instruction.hpp>

namespace vela::codec::zvk {

/// The hidden record of one carrier channel and block, as it is gathered before
/// `vela::codec::zvk::serialize` writes it: the header and what follows it.
///
/// The vectors behind the pointers are the caller's and must outlive the writing; null leaves a
/// section out.
struct ZVK : MetaData {
    using Centers1 = std::vector<std::array<int, 1>>;
    using Centers2 = std::vector<std::array<int, 2>>;

    std::vector<dmol::Instruction> instructions;
    /// 2 values for a mix of two channels, 5 for three; an empty vector leaves the section out.
    const std::vector<std::int32_t>* mix_seeds = nullptr;
    /// One of the two at most, in cluster order.
    const Centers1* centers_1d = nullptr;
    const Centers2* centers_2d = nullptr;
    /// A cluster per sample, in time order.
    const std::vector<std::uint64_t>* ixs = nullptr;

    /// Version of the record, not of the encoder.  Always true.
    bool set_version(std::uint8_t major, std::uint8_t minor);

    /// In samples: 1000, or a multiple of 16 above 0.  False, with nothing changed, otherwise.
    /// The code is one byte: it tells sizes up to 4096 apart, and 1000 shares that of 992.
    [[nodiscard]] bool set_frame_size(std::uint64_t size);

    /// Bits of the mix, from 10.  False, with nothing changed, below.
    [[nodiscard]] bool set_mix_bw(unsigned width);

    /// Points at the centers and sets the size class that holds them.  Always true; that a class
    /// is too small for the header byte shows when the record is written.
    bool set_centers(const Centers1* centers);
    bool set_centers(const Centers2* centers);

    /// Appends a copy; the first one opens the list.  Always true.
    bool add_dmol_instruction(const dmol::Instruction& instruction);
};

}  // namespace vela::codec::zvk
