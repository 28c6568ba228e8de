#pragma once

#include <check/Options.hpp>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

/// Carriers that are known to be sound, with the originals that went into them.
namespace check::support {

[[nodiscard]] std::filesystem::path answer(const std::string& name);

/// A carrier of a known answer.
[[nodiscard]] std::vector<int> carrier_of(const std::string& name, const std::string& file);

/// The carriers of a 13.1 scene behind each other, 32 blocks of 512 samples: blocks stand for
/// themselves, so that this is as sound as one carrier.
[[nodiscard]] std::vector<int> long_carrier();
inline constexpr std::size_t long_carrier_frame = 512;

/// What checks a known answer against its originals, from the command line of its encoder.
struct Call {
    Options options;
    std::string lowpass;
    std::string frame_count;
};
[[nodiscard]] Call call_for(const std::string& name);

/// All known answers by name.
[[nodiscard]] std::vector<std::string> all_answers();

/// Lines of the encoder's report that tell errors.
[[nodiscard]] std::vector<std::string> quality_lines(const std::string& report);

}  // namespace check::support
