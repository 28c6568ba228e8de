#include <algorithm>
#include <vela/carrier/Comparison.hpp>
#include <vela/carrier/details/refuse.hpp>
#include <vela/carrier/membership.hpp>
#include <vela/carrier/scale.hpp>

namespace vela::carrier {

namespace {

using details::refuse;

/// The stretch of an original that went into a block: padded with zeros, attenuated.
std::vector<int> stretch_of(const std::vector<int>& original, std::size_t start, const Block& block,
                            ChannelId channel) {
    std::vector<int> out(block.nr_samples());
    const std::size_t there = original.size() > start ? original.size() - start : 0;
    std::copy_n(original.begin() + static_cast<std::ptrdiff_t>(original.size() - there),
                std::min(there, out.size()), out.begin());
    attenuate(out, block.attenuation_ix(channel));
    return out;
}

}  // namespace

bool Comparison::add(std::string& why, const Block& block, std::span<const ChannelId> members,
                     const Channels& originals, std::size_t start) {
    if (!check_members(why, block, members)) return false;
    last_.clear();
    const std::vector<int> silence(block.nr_samples());
    for (const ChannelId channel : members) {
        const auto original = originals.find(channel);
        if (original == originals.end())
            return refuse(why, "there is no original of channel ", api::Channel::create(channel));
        const auto rebuilt = block.channels.find(channel);
        const BlockError error =
            error_of(stretch_of(original->second, start, block, channel),
                     rebuilt == block.channels.end() ? silence : rebuilt->second);
        last_.push_back(error);
        tallies_[channel].add(error.rms_db, error.peak_db);
    }
    return true;
}

std::map<ChannelId, Figures> Comparison::figures() const {
    std::map<ChannelId, Figures> out;
    for (const auto& [channel, tally] : tallies_)
        out[channel] = tally.figures();
    return out;
}

Figures Comparison::overall() const {
    Tally all;
    for (const auto& [channel, tally] : tallies_) {
        const Figures figures = tally.figures();
        all.add(figures.rms_db, figures.peak_db);
    }
    return all.figures();
}

}  // namespace vela::carrier
