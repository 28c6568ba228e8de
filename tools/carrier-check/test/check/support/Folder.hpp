#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>
#include <vela/file/Name.hpp>

namespace check::support {

/// An empty folder for one test, with the files that it writes.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    [[nodiscard]] vela::file::Name name(const std::string& file) const;

    vela::file::Name write(const std::string& file, const std::string& bytes) const;
    /// A WAV file of one or more channels of equal length.
    vela::file::Name write_wav(const std::string& file,
                               const std::vector<std::vector<int>>& channels,
                               std::uint16_t bits = 24, std::uint32_t sample_rate = 48000) const;

private:
    std::filesystem::path path_;
};

[[nodiscard]] std::string read_bytes(const vela::file::Name& file);

/// First channel of a WAV file.
[[nodiscard]] std::vector<int> read_samples(const vela::file::Name& file);

/// `value` as that many bytes, the low one first.
[[nodiscard]] std::string little_endian(std::uint64_t value, unsigned nr_bytes);

}  // namespace check::support
