#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>
#include <vela/api/Channel.hpp>
#include <vela/carrier/Instruction.hpp>

namespace vela::carrier {

/// Samples by channel, at 24-bit scale.
using Channels = std::map<api::channel::id::Value, std::vector<int>>;

/// The fixed fields of a record.
struct Header {
    std::uint32_t frame_size_code = 0;  ///< samples of the block / 16 - 1; 61 for 1000 too
    bool native_content = false;
    std::uint32_t version_major = 0;
    std::uint32_t version_minor = 0;
    bool dither = false;
    std::uint32_t rice_k = 0;           ///< 1 to 7 with indices, else 0
    std::uint32_t error_center_ix = 0;  ///< size class of the centers
    std::uint32_t nr_instruction_lists = 0;
    std::uint32_t center_bits = 0;                  ///< sign included; 0 without centers
    std::vector<api::channel::id::Value> channels;  ///< what is mixed, 1 to 3
};

/// What one block of a carrier holds: its record, and the channels rebuilt with it.
struct Block {
    unsigned nr_bitlines = 0;
    Header header;
    std::vector<int> seeds;                 ///< 0, 2 or 5, in the order in which unmixing counts
    std::vector<Instruction> instructions;  ///< without the closing `End`
    /// Centers that indices point to; the second element is 0 for two channels.
    std::vector<std::array<int, 2>> centers;
    std::uint32_t nr_center_slots = 0;  ///< places for centers, the unused ones included
    std::vector<std::uint32_t> ixs;     ///< one a sample, or none for one channel
    std::size_t nr_spare_bits = 0;      ///< padding behind the last section
    std::vector<int> mix;               ///< (24 - b)-bit values above the bit-lines
    /// The channels named in the header as they went into the mix: attenuation of a single channel
    /// (`channel_attenuation`) still in force, that of the group taken back.
    Channels channels;

    [[nodiscard]] std::size_t nr_samples() const { return mix.size(); }
    /// First instruction of that kind; null if there is none.
    [[nodiscard]] const Instruction* find(std::uint32_t opcode) const;
    /// Scaler index of the whole group, 0 if it is not attenuated.
    [[nodiscard]] std::uint32_t group_scaler_ix() const;
    /// Scaler index of one channel, 0 if it is not attenuated, 255 if it is muted.
    [[nodiscard]] std::uint32_t attenuation_ix(api::channel::id::Value channel) const;
    /// `channels` with the attenuation of each taken back; a muted one stays silent.
    [[nodiscard]] Channels unattenuated() const;
};

}  // namespace vela::carrier
