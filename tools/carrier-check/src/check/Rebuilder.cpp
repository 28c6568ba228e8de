#include <algorithm>
#include <check/Rebuilder.hpp>
#include <vela/api/Channel.hpp>

namespace check {

void Rebuilder::add_channel(vela::carrier::ChannelId id) {
    if (writers_.contains(id)) return;
    const vela::file::Name name(prefix_ + vela::api::Channel::create(id).short_name() + ".wav");
    vela::wav::Format format;
    format.format_tag = 1;
    format.channels = 1;
    format.sample_rate = sample_rate_;
    format.byte_rate = 3 * sample_rate_;
    format.block_align = 3;
    format.bits_per_sample = 24;
    writers_[id] = std::make_unique<vela::wav::FileWriter>(name, format);
}

void Rebuilder::take(const vela::carrier::Block& block) {
    for (auto& [id, samples] : block.unattenuated())
        block_.emplace(id, samples);
}

bool Rebuilder::end_block() {
    for (auto& [id, writer] : writers_) {
        auto& samples = block_[id];
        samples.resize(block_size_);
        // Taking back an attenuation may round past full scale.
        for (int& x : samples)
            x = std::clamp(x, -0x800000, 0x7FFFFF);
        if (!writer->add_frame({samples.data(), samples.data() + samples.size()})) return false;
    }
    block_.clear();
    return true;
}

}  // namespace check
