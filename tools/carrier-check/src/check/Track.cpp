#include <check/Track.hpp>
#include <check/explain_file.hpp>

namespace check {

bool Track::open(std::string& why, const vela::file::Name& name, std::size_t block_size,
                 std::uint64_t first_sample) {
    name_ = name;
    parser_.block_size = block_size;
    parser_.offset = first_sample;
    // The parser says no more than that a file is none; and it takes one that was never finished,
    // if the samples behind its header happen to look like chunks.
    why = explain_file(name);
    if (!why.empty()) return false;
    if (!parser_.parse(name)) {
        why = name.str() + ": is no WAV file with samples of a fixed size";
        return false;
    }
    return check_format_(why);
}

bool Track::check_format_(std::string& why) const {
    const auto nr_bytes = parser_.riff.chunk("data").size();
    if (nr_channels() == 0 || (bits_per_sample() != 16 && bits_per_sample() != 24))
        why = name_.str() + ": holds " + std::to_string(bits_per_sample()) + "-bit samples in " +
              std::to_string(nr_channels()) + (nr_channels() == 1 ? " channel" : " channels") +
              "; carriers and originals have 24 bits";
    else if (nr_bytes % parser_.format->block_align != 0)
        why = name_.str() + ": ends in the middle of a sample";
    return why.empty();
}

bool Track::next(std::string& why) {
    auto& at = parser_.blocks.begin();
    if (at == parser_.blocks.end()) {
        block_.channels.assign(nr_channels(), {});
        return true;
    }
    if (!at.parse_block_()) {
        why = name_.str() + ": cannot be read at sample " +
              std::to_string(at.index * parser_.block_size + parser_.offset);
        return false;
    }
    block_ = std::move(*at.cache);
    ++at;
    return true;
}

}  // namespace check
