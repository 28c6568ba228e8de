#include <algorithm>
#include <vela/codec/mux/Projector.hpp>

namespace vela::codec::mux {

namespace {

constexpr unsigned head = 16;  // samples that carry sync word and CRC
constexpr unsigned sync_bit = 1;

/// The `width` bits from `at` on, 1 to 32.
template <typename T>
unsigned bits_at(const std::vector<T>& words, std::size_t at, unsigned width) {
    const std::uint64_t two_words = std::uint64_t{words[at / 32]} << 32 | words[at / 32 + 1];
    return static_cast<unsigned>(two_words << at % 32 >> (64 - width));
}

/// The same of the next bits.
template <typename T>
unsigned next_bits(const std::vector<T>& words, std::size_t& at, unsigned width) {
    at += width;
    return bits_at(words, at - width, width);
}

}  // namespace

template <typename T, unsigned N>
Projector<T, N>::Projector(std::size_t nr_samples) : nr_samples_(nr_samples) {
    if (nr_samples_ < head) return;
    const std::uint64_t nr_bits = std::uint64_t{N} * nr_samples_ - ((nr_samples_ - 1) >> 4);
    if (nr_bits != capacity(nr_samples_)) return;
    const std::uint64_t nr_body_bits = nr_bits - std::uint64_t{2} * head;
    words_.resize(nr_body_bits / 32 + 2);  // one more, since bits are read out of two
}

template <typename T, unsigned N>
std::uint32_t Projector<T, N>::body_bits() const {
    return words_.empty() ? 0 : capacity(nr_samples_) - 2 * head;
}

template <typename T, unsigned N>
bool Projector<T, N>::fits_(const Range<int*>& samples) const {
    return samples.valid() && samples.size() >= nr_samples_ && !words_.empty();
}

template <typename T, unsigned N>
bool Projector<T, N>::project(Range<int*> samples) const {
    if (!fits_(samples)) return false;
    int* const out = samples.begin();
    std::size_t at = head;  // behind line 2
    for (std::size_t sample = 0; sample < head; ++sample) {
        const unsigned upper = N > 3 ? next_bits(words_, at, N - 3) : 0;
        const unsigned line_2 = bits_at(words_, sample, 1);
        out[sample] |= static_cast<int>(upper << 3 | line_2 << 2 | sync_bit);
    }
    for (std::size_t sixteenth = head; sixteenth < nr_samples_; sixteenth += 16) {
        out[sixteenth] |= static_cast<int>(next_bits(words_, at, N - 1) << 1);
        const std::size_t stop = std::min(sixteenth + 16, nr_samples_);
        for (std::size_t sample = sixteenth + 1; sample < stop; ++sample)
            out[sample] |= static_cast<int>(next_bits(words_, at, N));
    }
    return true;
}

template <typename T, unsigned N>
bool Projector<T, N>::project_crc(Range<int*> samples, std::uint16_t crc) const {
    if (!fits_(samples)) return false;
    for (std::size_t sample = 0; sample < head; ++sample)
        samples.begin()[sample] |= (crc >> (head - 1 - sample) & 1) << 1;
    return true;
}

template class Projector<unsigned, 3>;
template class Projector<unsigned, 4>;
template class Projector<unsigned, 5>;
template class Projector<unsigned, 6>;
template class Projector<unsigned, 7>;
template class Projector<unsigned, 8>;
template class Projector<unsigned, 9>;
template class Projector<unsigned, 10>;
template class Projector<unsigned, 11>;
template class Projector<unsigned, 12>;
template class Projector<unsigned, 13>;
template class Projector<unsigned, 14>;
template class Projector<unsigned, 15>;
template class Projector<unsigned, 16>;

}  // namespace vela::codec::mux
