#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vela/downmix/tdl/Parser.hpp>

namespace vela::fuzz {

namespace metadata_text_details {

using downmix::tdl::Parser;

inline bool numbers_are_in_range(const Parser& parser) {
    return std::ranges::all_of(parser.orbimix_preset, [](auto& e) { return e.second <= 255; }) &&
           std::ranges::all_of(parser.room_type,
                               [](auto& e) { return e.second <= api::RoomType{3}; });
}

inline bool loudness_is_whole(const Parser& parser) {
    return std::ranges::all_of(parser.loudness, [](const auto& entry) {
        return !entry.second.empty() && std::ranges::all_of(entry.second, [](const auto& value) {
            return value.parameter() < api::loudness::Parameter::None && value.dimension() >= 1 &&
                   value.dimension() <= 3;
        });
    });
}

inline bool gains_are_sound(const Parser& parser) {
    for (const auto& [sample, channels] : parser.gains)
        for (const auto& [channel, configs] : channels)
            for (const auto& [config, list] : configs) {
                if (config.movement >= downmix::Movement::None) return false;
                if ((config.dimensions & ~0b1110u) != 0 || !channel.channel.valid()) return false;
                if (!std::ranges::all_of(list, [](float gain) { return gain >= 0; })) return false;
            }
    return true;
}

inline bool channels_are_known(const Parser& parser) {
    const auto known = [](const auto& e) { return e.first.id() < api::channel::id::count; };
    const auto known_variant = [&](const auto& e) {
        return e.first.channel.id() < api::channel::id::count;
    };
    return std::ranges::all_of(parser.attn,
                               [&](auto& e) { return std::ranges::all_of(e.second, known); }) &&
           std::ranges::all_of(
               parser.default_gains,
               [&](auto& e) { return std::ranges::all_of(e.second, known_variant); }) &&
           std::ranges::all_of(parser.disabled, [&](auto& e) {
               return std::ranges::all_of(e.second, [&](const auto& disabled) {
                   return known_variant(disabled) && disabled.second < 1u << 15;
               });
           });
}

}  // namespace metadata_text_details

/// Reads any text as a metadata file.  False if the parser, whether it takes the text or not, holds
/// something that the encoder must never see, or if a comment ahead of the text changes the result.
inline bool metadata_text(std::string_view text) {
    using namespace metadata_text_details;
    Parser parser;
    const bool good = parser.parse(std::string(text));
    if (!numbers_are_in_range(parser) || !loudness_is_whole(parser)) return false;
    if (!gains_are_sound(parser) || !channels_are_known(parser)) return false;
    Parser with_comment;
    return with_comment.parse("# comment\n" + std::string(text)) == good;
}

}  // namespace vela::fuzz
