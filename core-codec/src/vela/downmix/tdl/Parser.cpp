#include <array>
#include <string_view>
#include <utility>
#include <vela/downmix/tdl/Parser.hpp>

namespace vela::downmix::tdl {

namespace {

using api::loudness::Parameter;

constexpr std::string_view blanks = " \t";
constexpr std::string_view brackets = "()";
constexpr float mute_db = -144.0f;
constexpr std::uint32_t max_dimension = 3;

template <typename T>
struct Keyword {
    std::string_view text;
    T value;
};

// Searched by prefix: the longer of two names that begin alike stands first.
constexpr std::array<Keyword<Parameter>, 6> loudness_keywords{{
    {"ProgramLoudnessRange", Parameter::ProgramLoudnessRange},
    {"ProgramLoudness", Parameter::ProgramLoudness},
    {"SpeechLoudness", Parameter::SpeechLoudness},
    {"MaximumTruePeak", Parameter::MaximumTruePeak},
    {"ShortTermLoudness", Parameter::ShortTermLoudness},
    {"MomentaryLoudness", Parameter::MomentaryLoudness},
}};

// "LFEFronts" stands behind "LFE" and is thus never found: files rely on its reading as the two
// movements LFE and Fronts.
constexpr std::array<Keyword<Movement>, 15> movement_keywords{{
    {"Corners", Movement::Corners},
    {"Trio", Movement::Trio},
    {"CenterSurround", Movement::CenterSurround},
    {"Surrounds", Movement::Surrounds},
    {"Fronts", Movement::Fronts},
    {"Backs", Movement::Backs},
    {"Center", Movement::Center},
    {"LeftBack", Movement::LeftBack},
    {"RightBack", Movement::RightBack},
    {"LeftSurround", Movement::LeftSurround},
    {"RightSurround", Movement::RightSurround},
    {"Left", Movement::Left},
    {"Right", Movement::Right},
    {"LFE", Movement::LFE},
    {"LFEFronts", Movement::LFEFronts},
}};

template <typename T, std::size_t N>
bool pop_keyword(T& value, Strange& line, const std::array<Keyword<T>, N>& keywords) {
    for (const auto& keyword : keywords) {
        if (!line.pop_if(keyword.text)) continue;
        value = keyword.value;
        return true;
    }
    return false;
}

}  // namespace

bool Parser::parse(std::string text) {
    clear();
    Strange rest(std::move(text));
    Strange line;
    while (rest.pop_line(line))
        if (!parse_line_(line)) return false;
    return true;
}

void Parser::clear() {
    *this = Parser();
}

bool Parser::parse_line_(Strange& line) {
    if (line.empty() || line.pop_if("#")) return true;
    std::uint64_t sample = 0;
    if (!pop_sample_ix_(sample, line)) return false;

    if (line.pop_if("META")) return parse_meta_(sample, line);
    if (line.pop_if("ATTN")) return parse_attn_(sample, line);
    if (line.pop_if("Orbimix_Preset")) return parse_preset_(sample, line);
    if (line.pop_if("ResetDownmix")) {
        gains[sample];
        disabled[sample];
        return true;
    }
    auto parameter = Parameter::None;
    if (pop_loudness_param_(parameter, line)) return parse_loudness_(sample, line, parameter);
    if (line.pop_if("DefaultGain")) return parse_default_gain_(sample, line);
    if (line.pop_if("ResetDefaultGains")) {
        default_gains[sample];
        return true;
    }
    if (line.pop_if("Disable")) return parse_disable_(sample, line);
    if (line.pop_if("RoomType")) return parse_room_type_(sample, line);
    return parse_gains_(sample, line);
}

bool Parser::parse_meta_(std::uint64_t sample, Strange& line) {
    std::uint32_t index = 0;
    float db = 0;
    if (!pop_meta_ix_(index, line) || !pop_whitespace_(line) || !line.pop_float(db)) return false;
    meta[sample][index] = db;
    return true;
}

bool Parser::parse_attn_(std::uint64_t sample, Strange& line) {
    api::ChannelVariant channel;
    float db = 0;
    if (!pop_channel_variant_(channel, line) || channel.variant != 0) return false;
    if (!pop_whitespace_(line) || !line.pop_float(db)) return false;
    attn[sample][channel.channel] = db;
    return true;
}

bool Parser::parse_preset_(std::uint64_t sample, Strange& line) {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    if (!line.pop_int(first) || first >= 16) return false;
    if (!pop_whitespace_(line) || !line.pop_int(second) || second > 15) return false;
    orbimix_preset[sample] = first * 16 + second;
    return true;
}

bool Parser::parse_loudness_(std::uint64_t sample, Strange& line, Parameter parameter) {
    std::uint32_t dimensions = 0;
    double data = 0;
    if (!pop_dimensions_(dimensions, line) || !line.pop_float(data)) return false;
    for (std::uint32_t dimension = 1; dimension <= max_dimension; ++dimension) {
        if ((dimensions >> dimension & 1u) == 0) continue;
        auto& value = loudness[sample].emplace_back();
        value.set_parameter(parameter);
        value.set_dimension(dimension);
        value.set_data(data);
    }
    return true;
}

bool Parser::parse_default_gain_(std::uint64_t sample, Strange& line) {
    api::ChannelVariant channel;
    float db = 0;
    if (!pop_channel_variant_(channel, line) || !pop_gain_(db, line)) return false;
    default_gains[sample][channel] = db;
    return true;
}

bool Parser::parse_disable_(std::uint64_t sample, Strange& line) {
    Strange list;
    if (!line.pop_bracket(list, brackets)) return false;
    std::uint32_t mask = 0;
    // What is no movement ends the list without an error.
    for (auto movement = Movement::None; pop_movement_(movement, list);) {
        mask |= 1u << static_cast<std::uint32_t>(movement);
        list.pop_if(",");
        list.pop_any_of(blanks);
    }
    api::ChannelVariant channel;
    if (!pop_channel_variant_(channel, line)) return false;
    disabled[sample][channel] = mask;
    return true;
}

bool Parser::parse_room_type_(std::uint64_t sample, Strange& line) {
    api::RoomType type{};
    if (!pop_roomtype_(type, line)) return false;
    room_type[sample] = type;
    return true;
}

bool Parser::parse_gains_(std::uint64_t sample, Strange& line) {
    Config config;
    api::ChannelVariant channel;
    std::vector<float> list;
    if (!pop_movement_(config.movement, line)) return false;
    if (!pop_dimensions_(config.dimensions, line)) return false;
    if (!pop_channel_variant_(channel, line) || !pop_whitespace_(line)) return false;
    if (!pop_gains_(list, line)) return false;
    gains[sample][channel][config] = std::move(list);
    return true;
}

bool Parser::pop_sample_ix_(std::uint64_t& sample, Strange& line) {
    return line.pop_int(sample) && pop_whitespace_(line);
}

bool Parser::pop_meta_ix_(std::uint32_t& index, Strange& line) {
    return pop_whitespace_(line) && line.pop_int(index);
}

bool Parser::pop_whitespace_(Strange& line) {
    return line.pop_any_of(blanks);
}

bool Parser::pop_channel_variant_(api::ChannelVariant& channel, Strange& line) {
    if (!pop_whitespace_(line)) return false;
    // All of the rest must be the name.  It is not taken, so that a line which needs something
    // behind its channel cannot give it by name.
    api::ChannelVariant named;
    if (named.parse(line.to_str())) {
        channel = named;
        return true;
    }
    std::uint32_t id = 0;
    if (!line.pop_int(id)) return false;
    channel.variant = 0;
    return api::Channel::create(channel.channel, static_cast<api::channel::id::Value>(id));
}

bool Parser::pop_loudness_param_(Parameter& parameter, Strange& line) {
    return pop_keyword(parameter, line, loudness_keywords);
}

bool Parser::pop_dimensions_(std::uint32_t& dimensions, Strange& line) {
    Strange list;
    if (!line.pop_bracket(list, brackets)) return false;
    while (!list.empty()) {
        std::uint32_t dimension = 0;
        if (!list.pop_int(dimension)) return false;
        if (dimension < 1 || dimension > max_dimension) return false;
        dimensions |= 1u << dimension;
        list.pop_if(",");
    }
    return true;
}

bool Parser::pop_gain_(float& db, Strange& line) {
    if (!pop_whitespace_(line)) return false;
    if (!line.pop_if("Mute") && !line.pop_if("mute")) return line.pop_float(db);
    db = mute_db;
    return true;
}

bool Parser::pop_movement_(Movement& movement, Strange& line) {
    return pop_keyword(movement, line, movement_keywords);
}

bool Parser::pop_roomtype_(api::RoomType& type, Strange& line) {
    std::uint32_t number = 0;
    if (!pop_whitespace_(line) || !line.pop_int(number) || number > 3) return false;
    type = static_cast<api::RoomType>(number);
    return true;
}

bool Parser::pop_gains_(std::vector<float>& list, Strange& line) {
    Strange values;
    if (!line.pop_bracket(values, brackets)) return false;
    while (!values.empty()) {
        float gain = 0;
        // Not-a-number is refused with what is negative.
        if (!values.pop_float(gain) || !(gain >= 0)) return false;
        list.push_back(gain);
        values.pop_if(",");
        values.pop_any_of(blanks);
    }
    return true;
}

}  // namespace vela::downmix::tdl
