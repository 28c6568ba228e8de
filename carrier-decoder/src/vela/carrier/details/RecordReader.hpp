#pragma once

#include <span>
#include <string>
#include <vela/carrier/BitReader.hpp>
#include <vela/carrier/Block.hpp>

namespace vela::carrier::details {

/// Reads the sections of one record in their order: header, seeds, instructions, centers, indices,
/// padding.  What comes before the header (sync word, checksum) has been looked at already.
///
/// The first thing that is wrong ends the reading, with the reason in `why`.
class RecordReader {
public:
    /// `bits` begin at the header.
    RecordReader(Block& out, std::string& why, BitReader bits)
        : block_(out), why_(why), bits_(std::move(bits)) {}

    [[nodiscard]] bool read(std::size_t nr_samples);

private:
    bool read_header_();
    bool read_fields_();
    bool read_channels_();
    bool check_for_mix_() const;
    bool check_without_mix_() const;
    bool read_seeds_();
    bool read_instructions_();
    bool read_centers_();
    bool read_slots_(std::size_t element);
    bool read_center_(int& out, bool& unused);
    bool read_ixs_(std::size_t nr_samples);
    bool read_ix_(std::uint32_t& out);
    bool check_centers_();
    bool read_padding_();

    [[nodiscard]] std::size_t nr_channels_() const { return block_.header.channels.size(); }

    Block& block_;
    std::string& why_;
    BitReader bits_;
    /// By element, then by slot: whether all bits of the slot are ones.
    std::vector<std::vector<bool>> reads_unused_;
};

}  // namespace vela::carrier::details
