#include <algorithm>
#include <array>
#include <iterator>
#include <vela/api/Channel.hpp>

namespace vela::api {

namespace {

enum Schema : std::size_t { vela_schema, nhk_schema };

std::size_t naming_schema = vela_schema;

struct Entry {
    channel::id::Value id;
    std::array<const char*, 2> names;  // by schema
    const char* full_name;
};

// "BL" and "BR" are the back pair in one schema and the bottom pair in the other.
constexpr std::array<Entry, channel::id::count> entries{{
    {channel::id::Left, {"L", "FLc"}, "Left"},
    {channel::id::Right, {"R", "FRc"}, "Right"},
    {channel::id::Center, {"C", "FC"}, "Center"},
    {channel::id::LFE, {"LFE", "LFE1"}, "LFE"},
    {channel::id::LeftSurround, {"Ls", "Ls"}, "LeftSurround"},
    {channel::id::RightSurround, {"Rs", "Rs"}, "RightSurround"},
    {channel::id::CenterSurround, {"Cs", "Cs"}, "CenterSurround"},
    {channel::id::LeftBack, {"Lb", "BL"}, "LeftBack"},
    {channel::id::RightBack, {"Rb", "BR"}, "RightBack"},
    {channel::id::HeightLeft, {"HL", "TpFLc"}, "HeightLeft"},
    {channel::id::HeightRight, {"HR", "TpFRc"}, "HeightRight"},
    {channel::id::HeightCenter, {"HC", "TpFC"}, "HeightCenter"},
    {channel::id::Top, {"T", "TpC"}, "Top"},
    {channel::id::HeightLeftSurround, {"HLs", "TpLs"}, "HeightLeftSurround"},
    {channel::id::HeightRightSurround, {"HRs", "TpRs"}, "HeightRightSurround"},
    {channel::id::HeightCenterSurround, {"HCs", "TpCs"}, "HeightCenterSurround"},
    {channel::id::HeightLeftBack, {"HLb", "TpBL"}, "HeightLeftBack"},
    {channel::id::HeightRightBack, {"HRb", "TpBR"}, "HeightRightBack"},
    {channel::id::LeftCenter, {"LC", "LC"}, "LeftCenter"},
    {channel::id::RightCenter, {"RC", "RC"}, "RightCenter"},
    {channel::id::LFE2, {"LFE2", "LFE2"}, "LFE2"},
    {channel::id::BottomLeft, {"BL", "BtFL"}, "BottomLeft"},
    {channel::id::BottomRight, {"BR", "BtFR"}, "BottomRight"},
    {channel::id::BottomCenter, {"BC", "BtFC"}, "BottomCenter"},
    {channel::id::Ambisonics, {"ambi", "ambi"}, "Ambisonics"},
}};

// The order in which names are searched.
constexpr std::array<channel::id::Value, channel::id::count> known_channels{
    channel::id::Top,
    channel::id::HeightLeftSurround,
    channel::id::HeightRightSurround,
    channel::id::HeightCenterSurround,
    channel::id::HeightLeftBack,
    channel::id::HeightRightBack,
    channel::id::HeightLeft,
    channel::id::HeightRight,
    channel::id::HeightCenter,
    channel::id::LeftSurround,
    channel::id::RightSurround,
    channel::id::CenterSurround,
    channel::id::LeftBack,
    channel::id::RightBack,
    channel::id::LeftCenter,
    channel::id::RightCenter,
    channel::id::LFE2,
    channel::id::LFE,
    channel::id::Left,
    channel::id::Right,
    channel::id::Center,
    channel::id::BottomLeft,
    channel::id::BottomRight,
    channel::id::BottomCenter,
    channel::id::Ambisonics};

// ASCII alone: names must not depend on the locale.
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool same_name(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower, lower);
}

const Entry* find_entry(std::uint32_t id) {
    return id < entries.size() ? &entries[id] : nullptr;
}

}  // namespace

bool Channel::create(Channel& out, channel::id::Value id) {
    if (!find_entry(id)) return false;
    out = create(id);
    return true;
}

bool Channel::create(Channel& out, std::string_view name) {
    if (same_name(name, "LF1")) return create(out, channel::id::LFE);
    for (const auto id : known_channels) {
        const Entry& known = entries[id];
        if (same_name(name, known.names[naming_schema]) || same_name(name, known.full_name))
            return create(out, id);
    }
    return false;
}

bool Channel::set_naming_schema(std::string_view schema) {
    if (schema == "vela")
        naming_schema = vela_schema;
    else if (schema == "NHK")
        naming_schema = nhk_schema;
    else
        return false;
    return true;
}

const char* Channel::short_name() const {
    const Entry* const entry = find_entry(id_);
    return entry ? entry->names[naming_schema] : nullptr;
}

const char* Channel::full_name() const {
    const Entry* const entry = find_entry(id_);
    return entry ? entry->full_name : nullptr;
}

void Channel::stream(std::ostream& out) const {
    if (full_name())
        out << full_name();
    else if (short_name())
        out << short_name();
    else if (valid())
        out << id();
    else
        out << "Invalid";
}

const std::vector<Channel>& channel::all() {
    static const std::vector<Channel> channels = [] {
        std::vector<Channel> by_id;
        by_id.reserve(std::size(entries));
        for (const Entry& entry : entries)
            by_id.push_back(Channel::create(entry.id));
        return by_id;
    }();
    return channels;
}

}  // namespace vela::api
