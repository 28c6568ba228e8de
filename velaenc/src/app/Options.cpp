#include <app/Options.hpp>
#include <vela/Strange.hpp>

namespace app {

vela::file::Name to_filename(const std::string& text) {
    vela::file::Name name;
    name << text;
    return name;
}

bool Options::add_argument(const std::string& text) {
    vela::Strange cursor(text);
    std::string piece;
    while (cursor.pop_until(piece, ';') || cursor.pop_all(piece))
        if (!piece.empty()) arguments.push_back(piece);
    return true;
}

bool Options::add_channel(const std::string& text) {
    vela::Strange cursor(text);
    std::string name;
    if (!cursor.pop_until(name, ':')) return false;
    Channel input;
    if (!input.channel.parse(name)) return false;
    input.filename = to_filename(cursor.to_str());
    channels.push_back(input);
    return true;
}

bool Options::set_output_format_and_fn(const std::string& text) {
    if (output_fn || output_format) return false;
    vela::Strange cursor(text);
    std::string format;
    if (cursor.pop_until(format, ':')) output_format = format;
    output_fn = to_filename(cursor.to_str());
    return true;
}

}  // namespace app
