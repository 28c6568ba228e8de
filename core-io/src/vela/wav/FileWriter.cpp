#include <algorithm>
#include <iostream>
#include <sstream>
#include <vela/bnb/details/bytes.hpp>
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

template <typename Tag>
bool fits(int value) {
    using Limits = bnb::Traits<Tag>;
    return !has_limits<Tag> || (value >= Limits::MinNeg && value <= Limits::MaxPos);
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

/// The number that stands in the file: samples of one byte are unsigned, with silence at 128.
template <typename Tag>
std::uint64_t stored(int value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return std::is_same_v<Tag, bnb::Int8_tag> ? bits + 128 : bits;
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
    const auto frames = channels.front().size();
    bytes_.resize(frames * channels.size() * bnb::Traits<Tag>::width);
    char* to = bytes_.data();
    for (std::size_t i = 0; i < frames; ++i) {
        for (const auto& samples : channels) {
            if (add_sample_<Tag>(to, samples.begin()[i])) continue;
            data_->append({bytes_.data(), to});
            return false;
        }
    }
    return data_->append(bytes_);
}

template <typename Tag>
bool FileWriter::add_sample_(char*& to, int value) {
    if (!fits<Tag>(value)) {
        report_clipping<Tag>(value);
        return false;
    }
    bnb::details::put_bytes(to, stored<Tag>(value), Tag(), bnb::LittleEndian_tag());
    to += bnb::Traits<Tag>::width;
    return true;
}

}  // namespace vela::wav
