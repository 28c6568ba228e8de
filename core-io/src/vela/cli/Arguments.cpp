#include <algorithm>
#include <sstream>
#include <utility>
#include <vela/cli/Arguments.hpp>

namespace vela::cli {

bool Arguments::add_switch(char short_name, const std::string& long_name, const std::string& help,
                           Switch on_switch) {
    const std::string name = trim_(long_name);
    if (!register_translation_(short_name, name, help)) return false;
    switches_[name] = std::move(on_switch);
    return true;
}

bool Arguments::add_option(char short_name, const std::string& long_name, const std::string& help,
                           Option on_option) {
    const std::string name = trim_(long_name);
    if (!register_translation_(short_name, name, help)) return false;
    options_[name] = std::move(on_option);
    return true;
}

void Arguments::add_header_line(const std::string& line) {
    header_lines_.push_back(line);
}

std::string Arguments::help() const {
    std::ostringstream out;
    for (const auto& line : header_lines_)
        out << line << '\n';
    for (const auto& [short_name, long_name] : short_to_long_)
        out << "  -" << short_name << " --" << long_name << "\t " << description_(long_name)
            << '\n';
    return out.str();
}

std::size_t Arguments::process_(const std::vector<std::string>& arguments) const {
    std::size_t i = std::min<std::size_t>(1, arguments.size());
    while (i < arguments.size()) {
        const auto name = parse_longhand_(arguments[i]);
        if (!name) return i;
        ++i;
        if (run_switch_(*name)) continue;
        if (i == arguments.size() || !run_option_(*name, arguments[i])) return i;
        ++i;
    }
    return arguments.size();
}

std::string Arguments::trim_(const std::string& long_name) {
    return long_name.substr(std::min(long_name.find_first_not_of('-'), long_name.size()));
}

bool Arguments::register_translation_(char short_name, const std::string& long_name,
                                      const std::string& help) {
    if (short_to_long_.contains(short_name) || long_names_.contains(long_name)) return false;
    short_to_long_[short_name] = long_name;
    long_names_.insert(long_name);
    descriptions_[long_name] = help;
    return true;
}

std::optional<std::string> Arguments::parse_longhand_(const std::string& word) const {
    if (word.starts_with("--")) return word.substr(2);
    if (word.size() < 2 || word[0] != '-') return std::nullopt;
    const auto found = short_to_long_.find(word[1]);
    if (found == short_to_long_.end()) return std::nullopt;
    return found->second;
}

bool Arguments::run_switch_(const std::string& long_name) const {
    const auto found = switches_.find(long_name);
    if (found == switches_.end()) return false;
    found->second();
    return true;
}

bool Arguments::run_option_(const std::string& long_name, const std::string& value) const {
    const auto found = options_.find(long_name);
    if (found == options_.end()) return false;
    found->second(value);
    return true;
}

std::string Arguments::description_(const std::string& long_name) const {
    const auto found = descriptions_.find(long_name);
    return found == descriptions_.end() ? std::string() : found->second;
}

}  // namespace vela::cli
