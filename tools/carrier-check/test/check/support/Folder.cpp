#include "Folder.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <vela/carrier/read_wav.hpp>
#include <vela/wav/FileWriter.hpp>

namespace check::support {

namespace fs = std::filesystem;

Folder::Folder() {
    std::string pattern = (fs::temp_directory_path() / "carrier-check-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
    path_ = pattern;
}

Folder::~Folder() {
    fs::remove_all(path_);
}

vela::file::Name Folder::name(const std::string& file) const {
    return vela::file::Name((path_ / file).string());
}

vela::file::Name Folder::write(const std::string& file, const std::string& bytes) const {
    std::ofstream(path_ / file, std::ios::binary) << bytes;
    return name(file);
}

vela::file::Name Folder::write_wav(const std::string& file,
                                   const std::vector<std::vector<int>>& channels,
                                   std::uint16_t bits, std::uint32_t sample_rate) const {
    vela::wav::Format format;
    format.format_tag = vela::wav::Format::pcm;
    format.channels = static_cast<std::uint16_t>(channels.size());
    format.sample_rate = sample_rate;
    format.bits_per_sample = bits;
    format.block_align = static_cast<std::uint16_t>(channels.size() * bits / 8);
    format.byte_rate = format.block_align * sample_rate;
    vela::wav::FileWriter writer(name(file), format);
    std::vector<vela::wav::FileWriter::Samples> all;
    for (const auto& samples : channels)
        all.emplace_back(samples.data(), samples.data() + samples.size());
    EXPECT_TRUE(writer.add_block(all));
    return name(file);
}

std::string read_bytes(const vela::file::Name& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file.str(), std::ios::binary).rdbuf();
    return bytes.str();
}

std::vector<int> read_samples(const vela::file::Name& file) {
    vela::carrier::WavFile wav;
    std::string why;
    EXPECT_TRUE(vela::carrier::read_wav(wav, why, file)) << why;
    return wav.channels.at(0);
}

std::string little_endian(std::uint64_t value, unsigned nr_bytes) {
    std::string out;
    for (unsigned i = 0; i < nr_bytes; ++i)
        out += static_cast<char>(value >> (8 * i));
    return out;
}

}  // namespace check::support
