#include <check/explain_file.hpp>
#include <filesystem>
#include <vela/file/exist.hpp>
#include <vela/wav/Format.hpp>

namespace check {

namespace {

using vela::file::Range;

struct Chunk {
    std::string id;
    std::uint32_t length = 0;
};

bool pop_length(Range& file, std::uint32_t& out) {
    return file.pop_raw<vela::bnb::UInt32_tag, vela::bnb::LittleEndian_tag>(out);
}

bool pop_riff_header(Range& file) {
    std::uint32_t ignored = 0;
    return file.pop_if("RIFF") && pop_length(file, ignored) && file.pop_if("WAVE");
}

bool pop_chunk_header(Range& file, Chunk& out) {
    return file.pop_slice(out.id, 4) && pop_length(file, out.length);
}

std::string explain_format(Range content) {
    vela::wav::Format format;
    if (format.parse(content) && format.is_pcm()) return "";
    return "its samples are no plain integers (format tag " + std::to_string(format.format_tag) +
           ')';
}

/// The content of the chunk comes next in `file`.
std::string explain_chunk(Range file, const Chunk& chunk) {
    if (chunk.id == "data" && chunk.length == 0 && !file.empty())
        return "its header tells of no samples, but " + std::to_string(file.size()) +
               " bytes follow; a run that was killed or ran out of disk leaves such a file";
    if (chunk.length > file.size())
        return "it ends after " + std::to_string(file.size()) + " of the " +
               std::to_string(chunk.length) + " bytes that its header tells of; it was cut short";
    Range content;
    if (chunk.id != "fmt " || !file.pop_slice(content, chunk.length)) return "";
    return explain_format(content);
}

std::string explain_content(Range file) {
    if (file.empty())
        return "it is empty; a run that was killed or ran out of disk leaves such a file";
    if (!pop_riff_header(file)) return "it does not begin like one";
    if (file.empty()) return "it ends behind its first 12 bytes";
    while (!file.empty()) {
        Chunk chunk;
        if (!pop_chunk_header(file, chunk)) return "it ends in the header of a chunk";
        if (auto why = explain_chunk(file, chunk); !why.empty()) return why;
        Range passed;
        const std::uint64_t padded = std::uint64_t{chunk.length} + chunk.length % 2;
        if (!file.pop_slice(passed, padded)) return "the pad byte at its end is missing";
    }
    return "";
}

}  // namespace

std::string explain_file(const vela::file::Name& name) {
    if (std::filesystem::is_directory(name.str())) return name.str() + ": is a folder";
    const Range file(name);
    if (!vela::file::exist(name) || !file.is_open()) return name.str() + ": cannot be opened";
    const auto why = explain_content(file);
    return why.empty() ? "" : name.str() + ": is no complete WAV file: " + why;
}

}  // namespace check
