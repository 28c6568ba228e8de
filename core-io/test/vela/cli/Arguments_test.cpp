#include <gtest/gtest.h>

#include <vela/cli/Arguments.hpp>

namespace vela::cli {
namespace {

using Words = std::vector<std::string>;

/// A parser that notes what it is given: "help" for a switch, "threads=4" for an option.
class Recorder {
public:
    Recorder() {
        EXPECT_TRUE(arguments.add_switch('h', "--help", "Print this help",
                                         [this] { calls.push_back("help"); }));
        add_option('j', "threads");
        add_option('n', "frame_count");
        add_option('L', "---lowpass");
        add_option('O', "data output");
    }

    std::size_t process(const Words& words) {
        std::vector<const char*> texts;
        for (const auto& word : words)
            texts.push_back(word.c_str());
        return arguments.process(static_cast<int>(texts.size()), texts.data());
    }

    Arguments arguments;
    Words calls;

private:
    void add_option(char short_name, const std::string& name) {
        EXPECT_TRUE(arguments.add_option(
            short_name, name, "",
            [this, name](const std::string& value) { calls.push_back(name + "=" + value); }));
    }
};

struct Case {
    const char* name;
    Words words;  // without the program's name
    std::size_t processed;
    Words calls;
};

class ArgumentLine : public testing::TestWithParam<Case> {};

TEST_P(ArgumentLine, IsDealtWithAsFarAsItMakesSense) {
    Recorder recorder;
    Words words{"velaenc"};
    words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
    EXPECT_EQ(recorder.process(words), GetParam().processed);
    EXPECT_EQ(recorder.calls, GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ArgumentLine,
    testing::Values(
        Case{"Nothing", {}, 1, {}},  //
        Case{"ShortSwitch", {"-h"}, 2, {"help"}}, Case{"LongSwitch", {"--help"}, 2, {"help"}},
        Case{"ShortOption", {"-j", "4"}, 3, {"threads=4"}},
        Case{"LongOption", {"--threads", "4"}, 3, {"threads=4"}},
        Case{"NegativeValue", {"-n", "-1", "-h"}, 4, {"frame_count=-1", "help"}},
        Case{"ValueThatLooksLikeASwitch", {"-n", "-h"}, 3, {"frame_count=-h"}},
        Case{"EmptyValue", {"-n", ""}, 3, {"frame_count="}},
        Case{"Repeated", {"-n", "1", "-n", "2"}, 5, {"frame_count=1", "frame_count=2"}},
        Case{"JoinedValueIsIgnored", {"-Lfir(20000)", "iir"}, 3, {"---lowpass=iir"}},
        Case{"JoinedSwitch", {"-hnonsense"}, 2, {"help"}},
        Case{"NameWithABlank", {"--data output", "x"}, 3, {"data output=x"}},
        Case{"MinusSignsOfTheNameAreDropped", {"--lowpass", "none"}, 3, {"---lowpass=none"}},
        Case{"OptionWithoutValueAtTheEnd", {"-h", "--threads"}, 3, {"help"}},
        Case{"ShortOptionWithoutValueAtTheEnd", {"-j"}, 2, {}},
        Case{"UnknownLongNameAtTheEnd", {"-h", "--unknown"}, 3, {"help"}},
        Case{"UnknownLongName", {"--unknown", "help"}, 2, {}},
        Case{"UnknownLongNameInTheMiddle", {"-h", "--unknown", "-h", "-h"}, 3, {"help"}},
        Case{"UnknownShortName", {"-h", "-x", "-h"}, 2, {"help"}},
        Case{"UnknownShortNameAtTheEnd", {"-x"}, 1, {}}, Case{"LoneMinus", {"-", "-h"}, 1, {}},
        Case{"TwoMinuses", {"--", "-h"}, 2, {}}, Case{"EmptyWord", {"", "-h"}, 1, {}},
        Case{"PlainWord", {"-h", "help"}, 2, {"help"}}),
    [](const auto& tested) { return tested.param.name; });

TEST(Arguments, WithoutEvenAProgramNameThereIsNothingToDo) {
    Recorder recorder;
    EXPECT_EQ(recorder.process({}), 0u);
    EXPECT_EQ(recorder.arguments.process<char>(0, nullptr), 0u);
    char name[] = "velaenc", flag[] = "-h";
    char* argv[] = {name, flag, nullptr};
    EXPECT_EQ(recorder.arguments.process(2, argv), 2u) << "as main gets them";
}

TEST(Arguments, ANameIsRegisteredOnce) {
    Recorder recorder;
    Arguments& arguments = recorder.arguments;
    const auto before = arguments.help();
    EXPECT_FALSE(arguments.add_switch('h', "other", "", [] {}));
    EXPECT_FALSE(arguments.add_switch('x', "help", "", [] {}));
    EXPECT_FALSE(arguments.add_option('x', "--threads", "", [](const std::string&) {}));
    EXPECT_EQ(arguments.help(), before);
    EXPECT_EQ(recorder.process({"velaenc", "-x"}), 1u);
    EXPECT_EQ(recorder.process({"velaenc", "-h"}), 2u);
    EXPECT_EQ(recorder.calls, Words{"help"});
}

TEST(Arguments, TheHelpIsSortedByShortName) {
    Arguments arguments;
    EXPECT_EQ(arguments.help(), "");
    arguments.add_option('o', "output", "Where to", [](const std::string&) {});
    arguments.add_option('O', "--data output", "", [](const std::string&) {});
    arguments.add_switch('h', "help", "Print this help", [] {});
    EXPECT_EQ(arguments.help(),
              "  -O --data output\t \n"
              "  -h --help\t Print this help\n"
              "  -o --output\t Where to\n");
    arguments.add_header_line("Usage");
    EXPECT_TRUE(arguments.help().starts_with("Usage\n  -O"));
}

}  // namespace
}  // namespace vela::cli
