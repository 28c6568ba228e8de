#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vela/downmix/tdl/Parser.hpp>

namespace vela::downmix::tdl {

/// Everything that a parser holds, a line for each value: the map, the sample, the keys, the value.
/// Channels are "id" or "id_variant", movements and dimensions numbers; an empty entry is "-".
class Dump {
public:
    static std::string of(const Parser& parser) {
        Dump dump;
        dump.levels_("attn", parser.attn);
        dump.levels_("meta", parser.meta);
        dump.gains_(parser.gains);
        dump.levels_("disabled", parser.disabled);
        for (const auto& [sample, values] : parser.loudness)
            for (const auto& v : values)
                dump.line_("loudness", sample, static_cast<unsigned>(v.parameter()), v.dimension(),
                           v.data());
        dump.levels_("default_gains", parser.default_gains);
        for (const auto& [sample, preset] : parser.orbimix_preset)
            dump.line_("orbimix_preset", sample, preset);
        for (const auto& [sample, type] : parser.room_type)
            dump.line_("room_type", sample, static_cast<unsigned>(type));
        return dump.out_.str();
    }

private:
    template <typename... Values>
    void line_(std::string_view map, const Values&... values) {
        out_ << map;
        (put_(values), ...);
        out_ << '\n';
    }

    template <typename T>
    void put_(const T& value) {
        out_ << ' ' << value;
    }
    void put_(const api::Channel& channel) { out_ << ' ' << channel.id(); }
    void put_(const api::ChannelVariant& key) {
        put_(key.channel);
        if (key.variant != 0) out_ << '_' << key.variant;
    }
    void put_(const std::vector<float>& list) {
        for (const float value : list)
            put_(value);
    }

    template <typename Line>
    void levels_(std::string_view map, const Line& time_line) {
        for (const auto& [sample, entry] : time_line) {
            if (entry.empty()) line_(map, sample, '-');
            for (const auto& [key, value] : entry)
                line_(map, sample, key, value);
        }
    }

    template <typename Line>
    void gains_(const Line& time_line) {
        for (const auto& [sample, entry] : time_line) {
            if (entry.empty()) line_("gains", sample, '-');
            for (const auto& [channel, configs] : entry)
                for (const auto& [config, list] : configs)
                    line_("gains", sample, channel, static_cast<unsigned>(config.movement),
                          config.dimensions, list);
        }
    }

    std::ostringstream out_;
};

}  // namespace vela::downmix::tdl
