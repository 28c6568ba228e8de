#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vela/bnb/Tags.hpp>

namespace vela::riff {

/// Finds the chunks of a RIFF file without reading what is in them.
///
///     "RIFF" length type  { id size content [pad byte if size is odd] }
///
/// The outer length is not trusted: chunks are walked to the end of the file, so that a file whose
/// writer was stopped before it knew the length still opens.  The walk must come out even: a chunk
/// cut short, a missing pad byte and trailing bytes too few for a chunk are failures.
///
/// `R` is a cursor on bytes, such as `file::Range`.
template <typename R>
class Parser {
public:
    /// Four characters, "WAVE" for audio.
    std::string type;
    /// Contents by four-character id, pad bytes left out; of chunks with the same id, the last.
    std::map<std::string, R> chunks;

    void clear() {
        type.clear();
        chunks.clear();
    }

    /// The content of a chunk; an empty range if there is none of that id.
    [[nodiscard]] R chunk(const std::string& id) const {
        const auto found = chunks.find(id);
        return found == chunks.end() ? R() : found->second;
    }

    /// Consumes `range`.  After a false, `chunks` holds those before the fault.
    [[nodiscard]] bool parse_(R& range) {
        clear();
        std::uint32_t ignored_length = 0;
        if (!range.pop_if("RIFF") || !pop_size_(range, ignored_length)) return false;
        if (!range.pop_slice(type, 4)) return false;
        while (!range.empty())
            if (!pop_chunk_(range)) return false;
        return true;
    }

private:
    static bool pop_size_(R& range, std::uint32_t& size) {
        return range.template pop_raw<bnb::UInt32_tag, bnb::LittleEndian_tag>(size);
    }

    bool pop_chunk_(R& range) {
        std::string id;
        std::uint32_t size = 0;
        R content;
        if (!range.pop_slice(id, 4) || !pop_size_(range, size)) return false;
        if (!range.pop_slice(content, size)) return false;
        if (size % 2 != 0 && !range.skip(1)) return false;
        chunks.insert_or_assign(id, content);
        return true;
    }
};

}  // namespace vela::riff
