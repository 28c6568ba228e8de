#include <algorithm>
#include <string>
#include <utility>
#include <vela/bnb/details/bytes.hpp>
#include <vela/wav/details/BlockIterator.hpp>

namespace vela::wav::details {
namespace {

/// Bytes of one locked read, so that the memory for them stays bounded whatever the block size.
constexpr std::uint64_t bytes_per_read = 1 << 16;

/// All samples of one channel: `n` numbers that lie `align` bytes apart.
template <typename Tag, typename T>
void decode(T* to, std::uint64_t n, const char* from, std::uint64_t align) {
    for (std::uint64_t i = 0; i < n; ++i)
        to[i] = static_cast<T>(
            bnb::details::get_bytes(from + i * align, Tag(), bnb::LittleEndian_tag()));
}

}  // namespace

template <typename T, typename R>
bool BlockIterator<T, R>::parse_block_() {
    if (cache.has_value()) return false;
    if (!format || !format->is_pcm() || format->block_align == 0) return false;
    switch (format->bits_per_sample) {
        case 16:
            return read_<bnb::Int16_tag>();
        case 24:
            return read_<bnb::Int24_tag>();
        case 32:
            return read_<bnb::Int32_tag>();
        default:
            return false;
    }
}

template <typename T, typename R>
BlockIterator<T, R>& BlockIterator<T, R>::operator++() {
    ++index;
    cache.reset();
    const std::uint64_t align = format ? format->block_align : 0;
    const std::uint64_t hop = block_size - overlap;
    const std::uint64_t left = data.size();
    // Compared by frames: in bytes a huge block size would overflow.
    const std::uint64_t step = align > 0 && hop > left / align ? left : align * hop;
    R passed;
    (void)data.pop_slice(passed, step);
    return *this;
}

template <typename T, typename R>
template <typename Tag>
bool BlockIterator<T, R>::read_() {
    const std::uint64_t align = format->block_align;
    const std::uint64_t frames = std::min(block_size, data.size() / align);
    // Asked before memory is, so that a header alone that tells of 65535 channels costs nothing.
    if (frames > 0 && align < format->channels * bnb::Traits<Tag>::width) return false;

    BlockInfo<T> block;
    block.start = index * block_size + offset;
    block.stop = block.start + frames;
    block.channels.resize(format->channels);
    for (auto& channel : block.channels)
        channel.resize(frames);
    if (!read_samples_<Tag>(block, frames)) return false;
    cache.set(std::move(block));
    return true;
}

template <typename T, typename R>
template <typename Tag>
bool BlockIterator<T, R>::read_samples_(BlockInfo<T>& block, std::uint64_t frames) const {
    const std::uint64_t align = format->block_align;
    const std::uint64_t frames_per_read = std::max<std::uint64_t>(bytes_per_read / align, 1);
    R rest = data;
    std::string bytes;
    for (std::uint64_t at = 0; at < frames; at += frames_per_read) {
        const auto n = std::min(frames_per_read, frames - at);
        if (!rest.pop_slice(bytes, n * align)) return false;
        const char* from = bytes.data();
        for (auto& channel : block.channels) {
            decode<Tag>(channel.data() + at, n, from, align);
            from += bnb::Traits<Tag>::width;
        }
    }
    return true;
}

template class BlockIterator<int, file::Range>;

}  // namespace vela::wav::details
