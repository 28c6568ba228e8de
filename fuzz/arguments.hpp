#pragma once

#include <app/Options.hpp>
#include <app/Settings.hpp>
#include <app/profile/Factory.hpp>
#include <app/specify_arguments.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>
#include <vela/Any.hpp>
#include <vela/cli/Arguments.hpp>

namespace vela::fuzz {

namespace arguments_details {

/// The program's own command line, specified once and read over and over.
class CommandLine {
public:
    CommandLine() { app::specify_arguments(arguments_, options_, complaints_); }

    /// How many of the words were dealt with.
    std::size_t read(const std::vector<const char*>& words) {
        options_ = app::Options();
        complaints_.str({});
        return arguments_.process(static_cast<int>(words.size()), words.data());
    }

    [[nodiscard]] const app::Options& options() const { return options_; }

private:
    app::Options options_;
    std::ostringstream complaints_;
    cli::Arguments arguments_;
};

/// Texts between zero bytes, which is how the system hands words over.
inline std::vector<std::string> words_of(std::string_view input) {
    std::vector<std::string> words{"velaenc"};
    while (!input.empty()) {
        const auto end = std::min(input.find('\0'), input.size());
        words.emplace_back(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return words;
}

/// What the run does with the options before it opens a file.
inline bool options_hold(app::Options options) {
    for (const auto& channel : options.channels)
        if (channel.channel.channel.id() >= api::channel::id::count) return false;
    options.channels.clear();  // or the files that they name would be opened
    std::ostringstream messages;
    app::Settings settings;
    if (!settings.set(options, messages)) return true;
    settings.stream(messages);
    if (settings.arguments.empty()) return true;
    const auto profile = app::profile::create("Vela-Codec");
    for (const auto& argument : settings.arguments) {
        if (argument.empty() || argument.find(';') != std::string::npos) return false;
        (void)profile->set_option("argument", Any(argument));
    }
    return true;
}

}  // namespace arguments_details

/// Reads any words as the command line of `velaenc`.  A number that cannot be converted is
/// expected to throw.  False if more words are dealt with than there are, or if an option holds
/// what it cannot.
inline bool arguments(std::string_view input) {
    using namespace arguments_details;
    static CommandLine command_line;
    const auto words = words_of(input);
    std::vector<const char*> pointers;
    for (const auto& word : words)
        pointers.push_back(word.c_str());
    try {
        if (command_line.read(pointers) > words.size()) return false;
    } catch (const std::invalid_argument&) {
        return true;
    } catch (const std::out_of_range&) {
        return true;
    }
    return options_hold(command_line.options());
}

}  // namespace vela::fuzz
