#include <algorithm>
#include <check/Options.hpp>
#include <vela/Strange.hpp>
#include <vela/api/ChannelVariant.hpp>

namespace check {

namespace {

constexpr std::size_t largest_frame_size = 4096;

bool is_frame_size(std::size_t size) {
    return size == 1000 || (size >= 16 && size <= largest_frame_size && size % 16 == 0);
}

}  // namespace

const char* Options::usage() {
    return R"(carrier-check --frame-size N [OPTION...] FILE...

Finds, parses and verifies every block of carriers that velaenc wrote: mono files, one per
carrier channel, or one interleaved file with --layout.  Which channel a mono file carries shows
by what it holds, or by the end of its name.

  --frame-size N         samples per block, as given to velaenc -f
  --layout NAME          input layout, such as 9.1; without it, as the records say
  --original NAME=FILE   compare the rebuilt channel with this mono file; once for each channel.
                         Carriers must be as long as the originals make them.
  --rebuild PREFIX       write the rebuilt channels as 24-bit WAV: PREFIX + name + .wav
  --json                 print the findings for machines
  --verbose              print a line per block
  --help                 print this

Exit status: 0 only if all is well, 1 if anything is not, 2 if the command line cannot be used.
)";
}

bool Options::parse(std::string& why, const std::vector<std::string>& arguments) {
    for (auto at = arguments.begin(); at != arguments.end(); ++at) {
        if (*at == "--json")
            json = true;
        else if (*at == "--verbose")
            verbose = true;
        else if (*at == "--help")
            help = true;
        else if (!at->starts_with('-'))
            files.emplace_back(*at);
        else if (const auto& name = *at; ++at == arguments.end())
            return why = name + " needs a value", false;
        else if (!take_(why, name, *at))
            return false;
    }
    if (help) return true;
    if (files.empty()) return why = "no file is given", false;
    if (frame_size == 0) return why = "--frame-size is missing", false;
    return true;
}

bool Options::take_(std::string& why, const std::string& name, const std::string& value) {
    if (name == "--layout") {
        layout = value;
    } else if (name == "--rebuild") {
        rebuild_prefix = value;
    } else if (name == "--original") {
        return take_original_(why, value);
    } else if (name == "--frame-size") {
        vela::Strange number(value);
        if (!number.pop_int(frame_size) || !number.empty() || !is_frame_size(frame_size))
            return why = value + " is no frame size: 16 to 4096 in steps of 16, or 1000", false;
    } else {
        return why = name + " is no option", false;
    }
    return true;
}

bool Options::take_original_(std::string& why, const std::string& text) {
    vela::Strange cursor(text);
    std::string name;
    vela::api::ChannelVariant key;
    if (!cursor.pop_until(name, '=') || !key.parse(name))
        return why = "--original takes NAME=FILE with the name of a channel, not " + text, false;
    const auto id = static_cast<vela::carrier::ChannelId>(key.channel.id());
    if (!originals.emplace(id, cursor.to_str()).second)
        return why = "there are two originals for channel " + name, false;
    return true;
}

}  // namespace check
