#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>
#include <vela/carrier/Block.hpp>
#include <vela/carrier/Tally.hpp>

namespace vela::carrier {

/// Measures carriers against the channels that went in, as the encoder reports it when it is done.
///
/// Each block of each carrier is added once.  A channel that stands in several groups counts once
/// for each of them; one that a block leaves out as silent is compared with zeros.
class Comparison {
public:
    using Id = api::channel::id::Value;

    /// Adds one block of one carrier.
    ///
    /// `members` are all channels that belong into that carrier, in the order in which they are
    /// mixed; `start` is the index of the block's first sample in `originals`, which may be
    /// shorter than the carrier and go on as zeros then.
    ///
    /// False, with the reason in `why`, if the block holds or attenuates a channel that is no
    /// member, holds its channels in another order, or if an original is missing.
    [[nodiscard]] bool add(std::string& why, const Block& block, std::span<const Id> members,
                           const Channels& originals, std::size_t start);

    /// Errors of the block that was added last, in the order of its members.
    [[nodiscard]] const std::vector<BlockError>& last() const { return last_; }

    /// Over all blocks, by channel.
    [[nodiscard]] std::map<Id, Figures> figures() const;
    /// Over all channels, each counting once.
    [[nodiscard]] Figures overall() const;

private:
    std::map<Id, Tally> tallies_;
    std::vector<BlockError> last_;
};

}  // namespace vela::carrier
