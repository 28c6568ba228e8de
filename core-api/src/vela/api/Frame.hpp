#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <vela/Range.hpp>
#include <vela/api/details/frame/Data.hpp>

namespace vela::api {

/// One channel's block of samples.
///
/// Samples are integers at their native width, right-justified and sign-extended; `bit_depth`
/// says how wide (0 until somebody sets it).  Copies are cheap: they share the samples until one
/// side writes.
template <typename T, typename K>
class Frame {
public:
    K key{};
    std::uint32_t bit_depth = 0;

    Frame() = default;
    explicit Frame(std::uint64_t size) : data_(size) {}
    Frame(const K& of, std::uint64_t size) : key(of), data_(size) {}

    [[nodiscard]] std::uint64_t size() const { return data_.size(); }
    /// Read access; nothing is copied.
    [[nodiscard]] std::span<const T> samples() const { return {data_.data(), data_.size()}; }

    /// Write access: duplicates the samples first if they are shared.
    std::span<T> write() { return {data_.begin(), data_.size()}; }
    /// The same as a pair of pointers.
    Range<T*> write_range() {
        T* const first = data_.begin();
        return {first, first + data_.size()};
    }

    /// Write access for who replaces all samples; what they are before is of no account.
    std::span<T> overwrite() { return {data_.begin_anew(), data_.size()}; }

    /// Whether other frames share the samples, if there are any.
    [[nodiscard]] bool is_shared() const { return size() != 0 && !data_.is_sole_owner(); }

    /// Takes over the samples of a range; another length than now makes a new buffer.
    template <typename It>
    void set_data(It first, It last) {
        const auto size = static_cast<std::uint64_t>(std::distance(first, last));
        if (size != data_.size()) data_ = details::frame::Data<T>(size);
        std::copy(first, last, overwrite().begin());
    }

private:
    details::frame::Data<T> data_;
};

}  // namespace vela::api
