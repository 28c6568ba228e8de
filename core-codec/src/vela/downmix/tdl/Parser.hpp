#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>
#include <vela/Strange.hpp>
#include <vela/api/Channel.hpp>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/RoomType.hpp>
#include <vela/api/loudness/Value.hpp>
#include <vela/downmix/Movement.hpp>
#include <vela/downmix/tdl/Config.hpp>

namespace vela::downmix::tdl {

/// Reads a downmix metadata file: lines that each say what holds from a sample on.
///
///     file      line, line, ...                       "\n" or "\r\n" between them
///     line      | "#" anything | sample " " item      nothing behind the item is looked at
///     item      "META" index dB
///               "ATTN" channel dB
///               "Orbimix_Preset" 0..15 0..15
///               "ResetDownmix"
///               "ProgramLoudness" dims value          and five more measurements
///               "DefaultGain" channel (dB | "Mute" | "mute")
///               "ResetDefaultGains"
///               "Disable" "(" movement, ... ")" channel
///               "RoomType" 0..3
///               movement dims channel "(" gain, ... ")"
///     dims      "(" 1..3, ... ")"                     directly behind the keyword
///     channel   id                                    or a name, but then nothing may follow it
///
/// The maps are keyed by sample index: samples per channel from the start of the input.  A later
/// line with the same keys replaces the value; loudness values are appended.
class Parser {
public:
    template <typename T>
    using TimeLine = std::map<std::uint64_t, T>;

    /// Attenuation in dB.
    TimeLine<std::map<api::Channel, float>> attn;
    /// Gain in dB by carrier channel index.
    TimeLine<std::map<std::uint32_t, float>> meta;
    /// Linear gains; an empty entry resets.
    TimeLine<std::map<api::ChannelVariant, std::map<Config, std::vector<float>>>> gains;
    /// Bit m says that movement m is off; an empty entry resets.
    TimeLine<std::map<api::ChannelVariant, std::uint32_t>> disabled;
    TimeLine<std::vector<api::loudness::Value>> loudness;
    /// Gain in dB, -144 for a muted channel; an empty entry resets.
    TimeLine<std::map<api::ChannelVariant, float>> default_gains;
    /// First number times 16 plus the second.
    TimeLine<std::uint32_t> orbimix_preset;
    TimeLine<api::RoomType> room_type;

    /// Forgets everything, then reads all of `text`.  False at the first malformed line; the maps
    /// then hold what stood before it.
    [[nodiscard]] bool parse(std::string text);

    void clear();

private:
    // A false from any of these ends the line, so how much was taken by then does not matter.
    bool parse_line_(Strange& line);
    bool parse_meta_(std::uint64_t sample, Strange& line);
    bool parse_attn_(std::uint64_t sample, Strange& line);
    bool parse_preset_(std::uint64_t sample, Strange& line);
    bool parse_loudness_(std::uint64_t sample, Strange& line, api::loudness::Parameter parameter);
    bool parse_default_gain_(std::uint64_t sample, Strange& line);
    bool parse_disable_(std::uint64_t sample, Strange& line);
    bool parse_room_type_(std::uint64_t sample, Strange& line);
    bool parse_gains_(std::uint64_t sample, Strange& line);

    static bool pop_sample_ix_(std::uint64_t& sample, Strange& line);
    static bool pop_meta_ix_(std::uint32_t& index, Strange& line);
    static bool pop_whitespace_(Strange& line);
    static bool pop_channel_variant_(api::ChannelVariant& channel, Strange& line);
    static bool pop_loudness_param_(api::loudness::Parameter& parameter, Strange& line);
    static bool pop_dimensions_(std::uint32_t& dimensions, Strange& line);
    static bool pop_gain_(float& db, Strange& line);
    static bool pop_movement_(Movement& movement, Strange& line);
    static bool pop_roomtype_(api::RoomType& type, Strange& line);
    static bool pop_gains_(std::vector<float>& list, Strange& line);
};

}  // namespace vela::downmix::tdl
