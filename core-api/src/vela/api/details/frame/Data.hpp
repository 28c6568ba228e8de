#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace vela::api::details::frame {

/// A shared sample buffer that is duplicated when somebody writes to it.
///
/// Copies share the samples.  The reference count is atomic: two threads may hold copies of one
/// buffer, and the one that writes gets its own.
template <typename T>
class Data {
public:
    Data() = default;
    /// `size` zero samples; size 0 allocates nothing, and one that nothing can hold throws.
    explicit Data(std::uint64_t size) : size_(size) {
        // The library adds room for the count of owners, unchecked.
        if (size_ > std::numeric_limits<std::size_t>::max() / sizeof(T))
            throw std::bad_array_new_length();
        if (size_ != 0) data_ = std::make_shared<T[]>(size_);
    }
    Data(const Data&) = default;
    Data(Data&& other) noexcept { swap(other); }
    Data& operator=(Data other) noexcept {
        swap(other);
        return *this;
    }

    void swap(Data& other) noexcept {
        data_.swap(other.data_);
        std::swap(size_, other.size_);
    }

    /// Write access: makes the samples private first.  Null for size 0.
    T* begin() {
        if (size_ == 0) return nullptr;
        if (!is_sole_owner()) {
            const auto shared = data_;
            std::copy_n(shared.get(), size_, begin_anew());
        }
        return data_.get();
    }

    /// Write access for who replaces all samples: shared ones are let go, not copied.
    T* begin_anew() {
        if (size_ != 0 && !is_sole_owner()) data_ = std::make_shared_for_overwrite<T[]>(size_);
        return data_.get();
    }

    /// Read access, never a copy.  Null for size 0.
    [[nodiscard]] const T* data() const { return data_.get(); }
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Whether there are samples, and this is their only owner.
    [[nodiscard]] bool is_sole_owner() const {
        if (data_.use_count() != 1) return false;
        // The count alone does not order what other threads read before they let go of the samples
        // with what is written now; letting go of a copy does.
        const auto copy = data_;
        return true;
    }

private:
    std::shared_ptr<T[]> data_;
    std::uint64_t size_ = 0;
};

}  // namespace vela::api::details::frame
