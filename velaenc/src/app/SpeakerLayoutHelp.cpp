#include <app/SpeakerLayoutHelp.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/api/Channel.hpp>

namespace app {

std::string speaker_layout_help() {
    std::string text = "All available speaker layouts:\n";
    for (const auto& layout : vela::SpeakerLayout::all()) {
        text += ' ';
        for (const std::string& name : layout.names())
            text += ' ' + name;
        text += '\n';
    }
    return text;
}

std::string channel_names_help() {
    std::string text = "All available channels:\n";
    for (const auto& channel : vela::api::channel::all()) {
        text += ' ';
        for (const char* const name : {channel.short_name(), channel.full_name()})
            if (name) text += std::string(" ") + name;
        text += '\n';
    }
    return text;
}

}  // namespace app
