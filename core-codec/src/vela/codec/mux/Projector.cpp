#include <vela/codec/mux/Projector.hpp>

namespace vela::codec::mux {

namespace {

constexpr std::size_t head = 16;  // samples that carry sync word and CRC
constexpr std::size_t crc_at = head;
constexpr std::size_t line_2_at = 2 * head;
constexpr std::size_t upper_lines_at = 3 * head;

/// The lowest line that the record uses in a sample behind the head.
constexpr unsigned lowest_line(std::size_t sample) {
    return sample % 16 == 0 ? 1 : 0;
}

/// ORs the next `count` entries into one sample.
template <unsigned count, typename T>
void set_bits(int& sample, const T*& at) {
    T bits = 0;
    for (unsigned i = 0; i < count; ++i)
        bits |= *at++;
    sample |= static_cast<int>(bits);
}

}  // namespace

template <typename T, unsigned N>
Projector<T, N>::Projector(std::size_t nr_samples) : nr_samples_(nr_samples) {
    setup_masks_();
}

template <typename T, unsigned N>
void Projector<T, N>::setup_masks_() {
    const std::lock_guard lock(mutex_);
    auto cached = masks_cache_.find(nr_samples_);
    if (cached == masks_cache_.end()) {
        std::vector<T> masks;
        if (!fill_masks_(masks)) return;
        cached = masks_cache_.emplace(nr_samples_, std::move(masks)).first;
    }
    masks_ = cached->second;
}

template <typename T, unsigned N>
bool Projector<T, N>::fill_masks_(std::vector<T>& out) const {
    if (nr_samples_ < head) return false;
    out.reserve(capacity(nr_samples_));
    const auto add_lines = [&out](unsigned highest, unsigned lowest) {
        for (unsigned line = highest + 1; line-- > lowest;)
            out.push_back(T{1} << line);
    };
    for (unsigned line = 0; line < 3; ++line)
        out.insert(out.end(), head, T{1} << line);
    for (std::size_t sample = 0; sample < head; ++sample)
        add_lines(N - 1, 3);
    for (std::size_t sample = head; sample < nr_samples_; ++sample)
        add_lines(N - 1, lowest_line(sample));
    return true;
}

template <typename T, unsigned N>
bool Projector<T, N>::fits_(const Range<int*>& samples) const {
    return samples.valid() && samples.size() >= nr_samples_ && !masks_.empty();
}

template <typename T, unsigned N>
bool Projector<T, N>::project(Range<int*> samples) const {
    if (!fits_(samples)) return false;
    int* const out = samples.begin();
    const T* at = masks_.data() + upper_lines_at;
    for (std::size_t sample = 0; sample < head; ++sample) {
        out[sample] |= static_cast<int>(masks_[sample] | masks_[line_2_at + sample]);
        set_bits<N - 3>(out[sample], at);
    }
    for (std::size_t sample = head; sample < nr_samples_; ++sample)
        if (lowest_line(sample) == 0)
            set_bits<N>(out[sample], at);
        else
            set_bits<N - 1>(out[sample], at);
    return true;
}

template <typename T, unsigned N>
bool Projector<T, N>::project_crc(Range<int*> samples) const {
    if (!fits_(samples)) return false;
    for (std::size_t sample = 0; sample < head; ++sample)
        samples.begin()[sample] |= static_cast<int>(masks_[crc_at + sample]);
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
