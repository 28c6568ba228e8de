#include <algorithm>
#include <array>
#include <utility>
#include <vela/bnb/details/numbers.hpp>
#include <vela/wav/details/BlockIterator.hpp>

namespace vela::wav::details {
namespace {

/// Bytes of one locked read, so that the memory for them stays bounded whatever the block size.
constexpr std::uint64_t bytes_per_read = 1 << 16;

/// The answer of `read` to the tag of samples of that many bits; false if nobody reads such.
template <typename Read>
bool with_tag(unsigned bits, Read read) {
    switch (bits) {
        case 16:
            return read(bnb::Int16_tag());
        case 24:
            return read(bnb::Int24_tag());
        case 32:
            return read(bnb::Int32_tag());
        default:
            return false;
    }
}

}  // namespace

template <typename T, typename R>
bool BlockIterator<T, R>::parse_block_() {
    if (cache.has_value() || !is_readable_()) return false;

    BlockInfo<T> block;
    block.start = index * block_size + offset;
    block.stop = block.start + nr_frames_();
    block.channels.resize(format->channels);
    std::vector<T*> to;
    for (auto& channel : block.channels) {
        channel.resize(nr_frames_());
        to.push_back(channel.data());
    }
    if (!read_(to, nr_frames_())) return false;
    cache.set(std::move(block));
    return true;
}

template <typename T, typename R>
bool BlockIterator<T, R>::is_mono() const {
    return is_readable_() && format->channels == 1;
}

template <typename T, typename R>
bool BlockIterator<T, R>::read_mono(std::span<T> to) {
    if (!is_mono()) return false;
    const auto frames = std::min<std::uint64_t>(nr_frames_(), to.size());
    std::ranges::fill(to.subspan(frames), T{});
    return read_(std::array{to.data()}, frames);
}

template <typename T, typename R>
BlockIterator<T, R>& BlockIterator<T, R>::operator++() {
    ++index;
    cache.reset();
    const std::uint64_t align = format ? format->block_align : 0;
    const std::uint64_t hop = block_size - overlap;
    const std::uint64_t left = data.size();
    // Compared by frames: in bytes a huge block size would overflow.
    (void)data.skip(align > 0 && hop > left / align ? left : align * hop);
    return *this;
}

// Asked before memory is, so that a header alone that tells of 65535 channels costs nothing.
template <typename T, typename R>
bool BlockIterator<T, R>::is_readable_() const {
    if (!format || !format->is_pcm() || format->block_align == 0) return false;
    return with_tag(format->bits_per_sample, [this]<typename Tag>(Tag) {
        return nr_frames_() == 0 ||
               format->block_align >= format->channels * bnb::Traits<Tag>::width;
    });
}

template <typename T, typename R>
std::uint64_t BlockIterator<T, R>::nr_frames_() const {
    return std::min(block_size, data.size() / format->block_align);
}

template <typename T, typename R>
bool BlockIterator<T, R>::read_(std::span<T* const> to, std::uint64_t frames) {
    const std::uint64_t align = format->block_align;
    const std::uint64_t frames_per_read = std::max<std::uint64_t>(bytes_per_read / align, 1);
    R rest = data;
    for (std::uint64_t at = 0; at < frames; at += frames_per_read) {
        const auto n = std::min(frames_per_read, frames - at);
        if (!rest.pop_slice(bytes_, n * align)) return false;
        with_tag(format->bits_per_sample, [&]<typename Tag>(Tag tag) {
            const char* from = bytes_.data();
            for (T* const channel : to) {
                bnb::details::get_numbers({channel + at, n}, from, align, tag,
                                          bnb::LittleEndian_tag());
                from += bnb::Traits<Tag>::width;
            }
            return true;
        });
    }
    return true;
}

template class BlockIterator<int, file::Range>;

}  // namespace vela::wav::details
