#include <cstdlib>
#include <string>
#include <vela/api/ChannelVariant.hpp>

namespace vela::api {

namespace {

bool parse_component(std::uint32_t& variant, std::string_view text) {
    constexpr std::string_view components = "WXYZRSTUV";
    if (text.size() != 1) return false;
    const auto ix = components.find(text.front());
    if (ix == std::string_view::npos) return false;
    variant = static_cast<std::uint32_t>(ix);
    return true;
}

void parse_number(std::uint32_t& variant, std::string_view text) {
    const std::string digits(text.substr(0, 30));
    char* stop = nullptr;
    const long long number = std::strtoll(digits.c_str(), &stop, 10);
    if (stop != digits.c_str()) variant = static_cast<std::uint32_t>(number);
}

}  // namespace

bool ChannelVariant::parse(std::string_view text) {
    const auto cut = text.find('_');
    const auto name = text.substr(0, cut);
    const auto rest = cut == std::string_view::npos ? std::string_view() : text.substr(cut + 1);

    if (!Channel::create(channel, name)) return false;
    if (channel == channel::Ambisonics) return parse_component(variant, rest);
    variant = 0;
    parse_number(variant, rest);
    return true;
}

}  // namespace vela::api
