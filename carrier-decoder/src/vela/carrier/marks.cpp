#include <vela/carrier/checksum.hpp>
#include <vela/carrier/marks.hpp>

namespace vela::carrier {

std::uint32_t word_on_line(std::span<const int> samples, unsigned line) {
    std::uint32_t word = 0;
    for (const int x : samples.first(nr_marked_samples))
        word = word << 1 | (static_cast<std::uint32_t>(x) >> line & 1u);
    return word;
}

bool has_sync_word(std::span<const int> samples) {
    return word_on_line(samples, 0) == 0xFFFF;
}

bool has_checksum(std::span<const int> samples) {
    return word_on_line(samples, 1) == crc_of_block(samples);
}

}  // namespace vela::carrier
