#include <algorithm>
#include <iostream>
#include <sstream>
#include <vela/bnb/details/numbers.hpp>
#include <vela/numeric/all_fit.hpp>
#include <vela/wav/FileWriter.hpp>
#include <vela/wav/serialize.hpp>

namespace vela::wav {
namespace {

/// Whether samples are tested against the limits of their width: 8 and 32 bits take any value.
template <typename Tag>
constexpr bool has_limits = false;
template <>
constexpr bool has_limits<bnb::Int16_tag> = true;
template <>
constexpr bool has_limits<bnb::Int24_tag> = true;

/// How many of the samples, from the first on, the width takes.
template <typename Tag>
std::size_t nr_fitting(std::span<const int> samples) {
    using Limits = bnb::Traits<Tag>;
    if (!has_limits<Tag> || numeric::all_fit(samples, 8 * Limits::width)) return samples.size();
    const auto misfit = std::ranges::find_if(
        samples, [](int sample) { return sample < Limits::MinNeg || sample > Limits::MaxPos; });
    return static_cast<std::size_t>(misfit - samples.begin());
}

template <typename Tag>
void report_clipping(int value) {
    using Limits = bnb::Traits<Tag>;
    std::ostringstream line;
    line << "Clipping detected: {sample: " << value
         << "}{bnb::Traits<Format>::MinNeg: " << Limits::MinNeg
         << "}{bnb::Traits<Format>::MaxPos: " << Limits::MaxPos << "}\n";
    std::cerr << line.str() << std::flush;
}

}  // namespace

FileWriter::FileWriter(const file::Name& name, const Format& format)
    : format_(format), file_(name), riff_(file_, "RIFF") {
    riff_.setSubchunkId("WAVE");
    serialize(riff_, format_);
    data_ = std::make_unique<riff::Chunk<file::String>>(riff_, "data");
}

bool FileWriter::add_frame(const Samples& samples) {
    if (!is_open_() || format_.channels != 1) return false;
    return add_({&samples, 1});
}

bool FileWriter::add_block(const std::vector<Samples>& channels) {
    if (!is_open_() || channels.empty() || channels.size() != format_.channels) return false;
    const auto size = channels.front().size();
    const auto same = [size](const Samples& samples) { return samples.size() == size; };
    return std::all_of(channels.begin(), channels.end(), same) && add_(channels);
}

bool FileWriter::commit() {
    if (!data_) return false;
    const bool committed = data_->commit();
    data_.reset();
    return committed && riff_.commit();
}

bool FileWriter::add_(std::span<const Samples> channels) {
    switch (format_.bits_per_sample) {
        case 8:
            return add_as_<bnb::Int8_tag>(channels);
        case 16:
            return add_as_<bnb::Int16_tag>(channels);
        case 24:
            return add_as_<bnb::Int24_tag>(channels);
        case 32:
            return add_as_<bnb::Int32_tag>(channels);
        default:
            return false;
    }
}

template <typename Tag>
bool FileWriter::add_as_(std::span<const Samples> channels) {
    const auto samples = interleaved_(channels);
    const auto fitting = samples.first(nr_fitting<Tag>(samples));
    if (fitting.size() < samples.size()) report_clipping<Tag>(samples[fitting.size()]);

    bytes_.resize(fitting.size() * bnb::Traits<Tag>::width);
    bnb::details::put_numbers(bytes_.data(), fitting, Tag(), bnb::LittleEndian_tag());
    // Samples of one byte are unsigned, with silence at 128.
    if constexpr (std::is_same_v<Tag, bnb::Int8_tag>)
        for (char& byte : bytes_)
            byte = static_cast<char>(byte ^ 0x80);
    return data_->append(bytes_) && fitting.size() == samples.size();
}

std::span<const int> FileWriter::interleaved_(std::span<const Samples> channels) {
    const auto frames = channels.front().size();
    if (channels.size() == 1) return {channels.front().begin(), frames};
    samples_.resize(frames * channels.size());
    auto to = samples_.begin();
    for (std::size_t i = 0; i < frames; ++i)
        for (const auto& samples : channels)
            *to++ = samples.begin()[i];
    return samples_;
}

}  // namespace vela::wav
