#include <algorithm>
#include <check/Rebuilder.hpp>
#include <filesystem>
#include <system_error>
#include <vela/api/Channel.hpp>
#include <vela/file/exist.hpp>

namespace check {

namespace {

constexpr std::uint16_t bytes_per_sample = 3;

vela::wav::Format mono_of(std::uint32_t sample_rate) {
    vela::wav::Format format;
    format.format_tag = vela::wav::Format::pcm;
    format.channels = 1;
    format.sample_rate = sample_rate;
    format.byte_rate = bytes_per_sample * sample_rate;
    format.block_align = bytes_per_sample;
    format.bits_per_sample = 8 * bytes_per_sample;
    return format;
}

bool are_one(const vela::file::Name& a, const vela::file::Name& b) {
    std::error_code absent;
    return std::filesystem::equivalent(a.str(), b.str(), absent);
}

}  // namespace

vela::file::Name Rebuilder::name_of_(vela::carrier::ChannelId id) const {
    return vela::file::Name(prefix_ + vela::api::Channel::create(id).short_name() + ".wav");
}

bool Rebuilder::add_channel(std::string& why, vela::carrier::ChannelId id,
                            std::span<const vela::file::Name> kept) {
    if (outputs_.contains(id)) return true;
    const auto name = name_of_(id);
    if (std::ranges::any_of(kept, [&](const auto& other) { return are_one(name, other); })) {
        why = name.str() + ": would be overwritten by the rebuilt channel; give another --rebuild";
        return false;
    }
    outputs_[id] = {name, std::make_unique<vela::wav::FileWriter>(name, mono_of(sample_rate_))};
    if (vela::file::exist(name)) return true;
    why = name.str() + ": cannot be made";
    return false;
}

void Rebuilder::take(const vela::carrier::Block& block) {
    for (auto& [id, samples] : block.unattenuated())
        block_.emplace(id, samples);
}

bool Rebuilder::end_block(std::string& why) {
    for (auto& [id, output] : outputs_) {
        auto& samples = block_[id];
        samples.resize(block_size_);
        // Taking back an attenuation may round past full scale.
        for (int& x : samples)
            x = std::clamp(x, -0x800000, 0x7FFFFF);
        if (output.writer->add_frame({samples.data(), samples.data() + samples.size()})) continue;
        why = output.name.str() + ": cannot be written";
        return false;
    }
    block_.clear();
    ++nr_blocks_;
    return true;
}

bool Rebuilder::finish(std::string& why) {
    const std::uint64_t nr_bytes = nr_blocks_ * block_size_ * bytes_per_sample;
    for (auto& [id, output] : outputs_) {
        output.writer.reset();
        std::error_code failed;
        const auto size = std::filesystem::file_size(output.name.str(), failed);
        if (!failed && size > nr_bytes) continue;
        why = output.name.str() + ": could not be written to its end";
        return false;
    }
    return true;
}

}  // namespace check
