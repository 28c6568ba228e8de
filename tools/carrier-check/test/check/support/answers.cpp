#include "answers.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "Folder.hpp"

namespace check::support {

namespace fs = std::filesystem;

namespace {

const fs::path root = fs::path(VELA_TEST_DATA) / "known-answers" / "answers";

std::vector<std::string> carrier_files(const fs::path& folder) {
    std::vector<std::string> out;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".wav") out.push_back(entry.path().string());
    std::ranges::sort(out);
    return out;
}

}  // namespace

fs::path answer(const std::string& name) {
    return root / name;
}

std::vector<int> carrier_of(const std::string& name, const std::string& file) {
    return read_samples(vela::file::Name((answer(name) / file).string()));
}

std::vector<int> long_carrier() {
    std::vector<int> out;
    for (const auto& file : carrier_files(answer("mixed-13.1"))) {
        const auto samples = read_samples(vela::file::Name(file));
        out.insert(out.end(), samples.begin(), samples.end());
    }
    return out;
}

Call call_for(const std::string& name) {
    Call call;
    std::vector<std::string> words = carrier_files(answer(name));
    std::ifstream arguments(answer(name) / "arguments.txt");
    for (std::string key, value; std::getline(arguments, key) && std::getline(arguments, value);) {
        if (key == "-l") words.insert(words.end(), {"--layout", value});
        if (key == "-f") words.insert(words.end(), {"--frame-size", value});
        if (key == "-L") call.lowpass = value;
        if (key == "-n") call.frame_count = value;
        if (key != "-i") continue;
        const auto colon = value.find(':');
        const auto file = answer(name) / value.substr(colon + 1);
        words.insert(words.end(), {"--original", value.substr(0, colon) + '=' + file.string()});
    }
    std::string why;
    EXPECT_TRUE(call.options.parse(why, words)) << why;
    return call;
}

std::vector<std::string> all_answers() {
    std::vector<std::string> out;
    for (const auto& entry : fs::directory_iterator(root))
        out.push_back(entry.path().filename().string());
    std::ranges::sort(out);
    return out;
}

std::vector<std::string> quality_lines(const std::string& report) {
    std::vector<std::string> out;
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("Quality metrics")) out.push_back(line);
    return out;
}

}  // namespace check::support
