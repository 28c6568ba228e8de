#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>
#include <vela/carrier/Block.hpp>
#include <vela/file/Name.hpp>

namespace check {

/// What was found in one carrier channel.
struct CarrierReport {
    using Instruction = std::pair<std::uint32_t, std::vector<std::uint32_t>>;

    vela::file::Name file;
    vela::carrier::ChannelId carrier = vela::carrier::ChannelId::None;

    std::size_t nr_blocks = 0;
    std::size_t nr_sound = 0;
    std::size_t nr_sync = 0;      ///< blocks with a sync word
    std::size_t nr_checksum = 0;  ///< blocks with the right checksum
    // Of the sound blocks.
    std::vector<unsigned> bitlines;
    std::vector<std::size_t> centers;
    std::vector<std::size_t> spare_bits;
    /// Frames that carry each instruction, with its operands.
    std::map<Instruction, std::vector<std::size_t>> instructions;

    std::vector<std::string> problems;

    void add(std::size_t frame, const vela::carrier::Block& block);
    void add_problem(std::string sentence);
};

/// Smallest, median and largest; the lower median of an even count.
template <typename T>
struct Spread {
    T from{};
    T median{};
    T to{};
};
template <typename T>
[[nodiscard]] Spread<T> spread_of(std::vector<T> values);

/// "0-2 5 7-9": ascending numbers as runs.
[[nodiscard]] std::string runs_of(const std::vector<std::size_t>& numbers);

/// What an instruction goes by, such as "InputLayout".
[[nodiscard]] const char* name_of(std::uint32_t opcode);

}  // namespace check
