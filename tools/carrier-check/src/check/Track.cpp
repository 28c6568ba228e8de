#include <check/Track.hpp>
#include <vela/file/exist.hpp>

namespace check {

bool Track::open(std::string& why, const vela::file::Name& name, std::size_t block_size) {
    name_ = name;
    parser_.block_size = block_size;
    if (!vela::file::exist(name)) {
        why = name.str() + ": cannot be opened";
        return false;
    }
    if (!parser_.parse(name)) {
        why = name.str() +
              ": is no complete WAV file of PCM samples (a run that was killed or ran out of disk "
              "leaves such files)";
        return false;
    }
    if (nr_channels() == 0 || (bits_per_sample() != 16 && bits_per_sample() != 24)) {
        why = name.str() + ": holds " + std::to_string(bits_per_sample()) + "-bit samples in " +
              std::to_string(nr_channels()) + " channels, not 24-bit samples";
        return false;
    }
    return true;
}

bool Track::next(std::string& why) {
    auto& at = parser_.blocks.begin();
    if (at == parser_.blocks.end()) {
        block_.channels.assign(nr_channels(), {});
        return true;
    }
    if (!at.parse_block_()) {
        why = name_.str() + ": cannot be read at sample " +
              std::to_string(at.index * parser_.block_size);
        return false;
    }
    block_ = std::move(*at.cache);
    ++at;
    return true;
}

}  // namespace check
