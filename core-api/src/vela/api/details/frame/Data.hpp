#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>

namespace vela::api::details::frame {

/// A shared sample buffer that is duplicated when somebody writes to it.
///
/// Copies share the samples.  The reference count is atomic: two threads may hold copies of one
/// buffer, and the one that writes gets its own.
template <typename T>
class Data {
public:
    Data() = default;
    /// `size` zero samples; size 0 allocates nothing.
    explicit Data(std::uint64_t size)
        : samples_(size ? new T[size]() : nullptr, std::default_delete<T[]>()), size_(size) {}

    /// Write access: makes the samples private first.  Null for size 0.
    T* begin() {
        if (size_ == 0) return nullptr;
        if (samples_.use_count() != 1) {
            Data own(size_);
            std::copy_n(samples_.get(), size_, own.samples_.get());
            std::swap(*this, own);
        }
        return samples_.get();
    }

    /// Read access, never a copy.  Null for size 0.
    [[nodiscard]] const T* data() const { return samples_.get(); }
    [[nodiscard]] std::uint64_t size() const { return size_; }

private:
    std::shared_ptr<T> samples_;
    std::uint64_t size_ = 0;
};

}  // namespace vela::api::details::frame
