#include <algorithm>
#include <check/Originals.hpp>

namespace check {

bool Originals::open(std::string& why,
                     const std::map<vela::carrier::ChannelId, vela::file::Name>& files,
                     std::size_t block_size) {
    block_size_ = block_size;
    for (const auto& [id, file] : files) {
        if (!tracks_[id].open(why, file, block_size)) return false;
        if (tracks_[id].nr_channels() != 1)
            why = file.str() + ": is not mono, as an original must be";
        else if (tracks_[id].bits_per_sample() != 24)
            why = file.str() + ": has not the 24 bits that the encoder takes";
        else if (tracks_[id].sample_rate() != *sample_rate())
            why = file.str() + ": has another sample rate than the other originals";
        if (!why.empty()) return false;
    }
    return true;
}

bool Originals::next(std::string& why) {
    for (auto& [id, track] : tracks_) {
        if (!track.next(why)) return false;
        const auto samples = track.samples(0);
        block_[id].assign(samples.begin(), samples.end());
    }
    return true;
}

std::optional<std::uint32_t> Originals::sample_rate() const {
    if (tracks_.empty()) return std::nullopt;
    return tracks_.begin()->second.sample_rate();
}

std::uint64_t Originals::nr_blocks() const {
    std::uint64_t shortest = tracks_.begin()->second.size();
    for (const auto& [id, track] : tracks_)
        shortest = std::min(shortest, track.size());
    return std::max<std::uint64_t>(1, (shortest + block_size_ - 1) / block_size_);
}

}  // namespace check
