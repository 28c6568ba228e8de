#include <algorithm>
#include <array>
#include <span>
#include <vela/downmix/tdl/meta_channel.hpp>

namespace vela::downmix::tdl {

namespace {

namespace id = api::channel::id;

constexpr std::array<id::Value, 6> up_to_5_1{id::Left,         id::Center,        id::Right,
                                             id::LeftSurround, id::RightSurround, id::LFE};
constexpr std::array<id::Value, 8> up_to_7_1{
    id::Left,          id::Center,   id::Right,     id::LeftSurround,
    id::RightSurround, id::LeftBack, id::RightBack, id::LFE};

/// Empty for a layout that is no carrier.
std::span<const id::Value> column_of(const api::SpeakerLayout& layout) {
    switch (layout.mask()) {
        case 0x3:
        case 0x4:
        case 0xB:
        case 0x33:
        case 0x37:
        case 0x3F:
            return up_to_5_1;
        case 0x1B7:
        case 0x1BF:
            return up_to_7_1;
        default:
            return {};
    }
}

}  // namespace

bool meta_channel_to_chix(unsigned& chix, const api::Channel& channel,
                          const api::SpeakerLayout& layout) {
    const auto column = column_of(layout);
    const auto found = std::ranges::find(column, channel.id());
    if (found == column.end()) return false;
    chix = static_cast<unsigned>(found - column.begin());
    return true;
}

bool meta_chix_to_channel(api::Channel& channel, unsigned chix, const api::SpeakerLayout& layout) {
    const auto column = column_of(layout);
    if (column.empty()) return false;
    if (chix < column.size()) channel = api::Channel::create(column[chix]);
    return true;
}

}  // namespace vela::downmix::tdl
