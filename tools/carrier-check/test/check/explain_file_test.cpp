#include <gtest/gtest.h>

#include <check/explain_file.hpp>
#include <functional>

#include "support/Folder.hpp"

namespace check {
namespace {

using support::Folder;
using support::little_endian;

/// Header of 44 bytes, 100 samples of 3 bytes.
std::string sound_file(const Folder& folder) {
    return support::read_bytes(folder.write_wav("sound.wav", {std::vector<int>(100, 0x123456)}));
}

struct Case {
    const char* name;
    std::function<std::string(std::string)> damage;
    const char* why;
};

class ExplainFile : public testing::TestWithParam<Case> {};

TEST_P(ExplainFile, SaysWhatIsWrong) {
    const Folder folder;
    const auto file = folder.write("a.wav", GetParam().damage(sound_file(folder)));
    const std::string why = GetParam().why;
    EXPECT_EQ(explain_file(file),
              why.empty() ? "" : file.str() + ": is no complete WAV file: " + why);
}

std::string with(std::string bytes, std::size_t at, const std::string& piece) {
    return bytes.replace(at, piece.size(), piece);
}

INSTANTIATE_TEST_SUITE_P(
    All, ExplainFile,
    testing::Values(
        Case{"Sound", [](auto bytes) { return bytes; }, ""},
        // Lengths are written last, so a writer that was stopped leaves 0 in both places.
        Case{"Killed",
             [](auto bytes) {
                 return with(with(bytes, 40, std::string(4, '\0')), 4, std::string(4, '\0'));
             },
             "its header tells of no samples, but 300 bytes follow; a run that was killed or ran "
             "out of disk leaves such a file"},
        Case{"KilledBeforeItWrote", [](auto) { return ""; },
             "it is empty; a run that was killed or ran out of disk leaves such a file"},
        // Zeros would pass for chunks without name and content.
        Case{"KilledInSilence", [](auto bytes) { return with(bytes, 40, std::string(304, '\0')); },
             "its header tells of no samples, but 300 bytes follow; a run that was killed or ran "
             "out of disk leaves such a file"},
        Case{"CutInTheSamples", [](auto bytes) { return bytes.substr(0, 144); },
             "it ends after 100 of the 300 bytes that its header tells of; it was cut short"},
        Case{"CutInAChunkHeader", [](auto bytes) { return bytes.substr(0, 40); },
             "it ends in the header of a chunk"},
        Case{"CutBehindTheStart", [](auto bytes) { return bytes.substr(0, 12); },
             "it ends behind its first 12 bytes"},
        Case{"NoWav", [](auto bytes) { return with(bytes, 0, "RIFX"); },
             "it does not begin like one"},
        Case{"OtherForm", [](auto bytes) { return with(bytes, 8, "AVI "); },
             "it does not begin like one"},
        Case{"Float", [](auto bytes) { return with(bytes, 20, little_endian(3, 2)); },
             "its samples are no plain integers (format tag 3)"},
        Case{"NoPad",
             [](auto bytes) { return with(bytes, 40, little_endian(299, 4)).substr(0, 44 + 299); },
             "the pad byte at its end is missing"}),
    [](const auto& param) { return param.param.name; });

TEST(ExplainFile, NamesWhatCannotBeOpened) {
    const Folder folder;
    EXPECT_EQ(explain_file(folder.name("none")), folder.name("none").str() + ": cannot be opened");
    EXPECT_EQ(explain_file(folder.name("")), folder.name("").str() + ": is a folder");
}

TEST(ExplainFile, FindsEveryCut) {
    const Folder folder;
    const std::string bytes = sound_file(folder);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        if (size == 36) continue;  // ends between two chunks: a file without samples
        EXPECT_NE(explain_file(folder.write("a.wav", bytes.substr(0, size))), "") << size;
    }
}

}  // namespace
}  // namespace check
