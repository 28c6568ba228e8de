#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vela::cli {

/// A parser of switches (`-h`, `--help`) and of options, which take the next word as their value.
///
///     velaenc -n -1 --threads 4 -h
///              |  |                  the value is taken as it stands, minus sign or not
///
/// It only calls what was registered: a value that makes no sense is for the callable to complain
/// about, and does not stop the parser.
class Arguments {
public:
    using Switch = std::function<void()>;
    using Option = std::function<void(const std::string&)>;

    /// Registers a switch or an option.  Minus signs in front of `long_name` are dropped.  False,
    /// and nothing changes, if the short or the long name is taken.
    bool add_switch(char short_name, const std::string& long_name, const std::string& help,
                    Switch on_switch);
    bool add_option(char short_name, const std::string& long_name, const std::string& help,
                    Option on_option);

    /// A line to be printed above the table of the help.
    void add_header_line(const std::string& line);

    /// Deals with the arguments as `main` gets them, and returns how many of them, the program name
    /// included, could be dealt with.
    ///
    /// Less than `count` says at which place the line makes no sense; behind an unknown long name
    /// it is the place after it.  An option without its value, or an unknown long name, at the very
    /// end counts as dealt with, and is as if it had not been given.
    template <typename Char>
    [[nodiscard]] std::size_t process(int count, const Char* const* arguments) {
        if (count <= 0) return 0;
        return process_(std::vector<std::string>(arguments, arguments + count));
    }

    /// The header lines, then a line per switch and option in the order of their short names.
    [[nodiscard]] std::string help() const;

private:
    [[nodiscard]] std::size_t process_(const std::vector<std::string>& arguments) const;
    static std::string trim_(const std::string& long_name);
    bool register_translation_(char short_name, const std::string& long_name,
                               const std::string& help);
    /// The long name that a word stands for: "-h" by its first letter alone, "--help" unchecked.
    [[nodiscard]] std::optional<std::string> parse_longhand_(const std::string& word) const;
    /// Run the callable of that name.  False if there is none.
    bool run_switch_(const std::string& long_name) const;
    bool run_option_(const std::string& long_name, const std::string& value) const;
    [[nodiscard]] std::string description_(const std::string& long_name) const;

    std::map<char, std::string> short_to_long_;
    std::set<std::string> long_names_;
    std::map<std::string, std::string> descriptions_;
    std::map<std::string, Switch> switches_;
    std::map<std::string, Option> options_;
    std::vector<std::string> header_lines_;
};

}  // namespace vela::cli
