#pragma once

#include <bit>
#include <cstdint>
#include <ostream>
#include <vela/api/Channel.hpp>

namespace vela::api {

/// A set of channels: bit i of the mask stands for channel id i, 0 to 24.
///
/// Bits above 24 are ignored by everything that reads the set.
class SpeakerLayout {
public:
    SpeakerLayout() = default;
    explicit SpeakerLayout(std::uint64_t mask) : bits_(mask) {}

    /// The low 25 bits.
    [[nodiscard]] std::uint32_t mask() const { return static_cast<std::uint32_t>(bits_ & used); }
    [[nodiscard]] bool test(std::uint32_t id) const {
        return id < channel::id::count && (mask() >> id & 1u) != 0;
    }
    [[nodiscard]] bool test(const Channel& channel) const { return test(channel.id()); }
    /// Number of channels.
    [[nodiscard]] std::uint32_t count() const {
        return static_cast<std::uint32_t>(std::popcount(mask()));
    }

    /// Calls `f` with each channel by ascending id, until it returns false; false if it did.
    template <typename F>
    bool each_channel(F&& f) const {
        for (std::uint32_t id = 0; id < channel::id::count; ++id) {
            if (!test(id)) continue;
            Channel channel;
            if (!Channel::create(channel, static_cast<channel::id::Value>(id))) return false;
            if (!f(channel)) return false;
        }
        return true;
    }

    /// 25 characters "0" or "1", the highest channel id first.
    void stream(std::ostream& out) const;

    bool operator==(const SpeakerLayout& other) const { return mask() == other.mask(); }

private:
    static constexpr std::uint64_t used = (std::uint64_t{1} << channel::id::count) - 1;

    std::uint64_t bits_ = 0;
};

}  // namespace vela::api
