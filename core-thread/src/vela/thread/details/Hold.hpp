#pragma once

#include <utility>

namespace vela::thread {

template <typename T>
class PingPong;

namespace details {

/// Holds one slot of a `PingPong` busy, until `end` or the end of its life; or holds none, when the
/// hand-over was closed.
///
/// The slot belongs to the holder alone meanwhile.  The `PingPong` must outlive the holder.
template <typename T>
class Hold {
public:
    /// What a `PingPong` does when the slot comes back; only the `PingPong` can name it.
    using Release = void (PingPong<T>::*)();

    Hold(PingPong<T>& pingpong, T* slot, Release release)
        : released_(slot == nullptr), pingpong_(&pingpong), slot_(slot), release_(release) {}
    Hold(Hold&& other) noexcept
        : released_(std::exchange(other.released_, true)),
          pingpong_(other.pingpong_),
          slot_(std::exchange(other.slot_, nullptr)),
          release_(other.release_) {}
    Hold& operator=(Hold&&) = delete;
    ~Hold() { end(); }

    /// Whether there is a slot; access must be asked for only then.
    explicit operator bool() const { return slot_ != nullptr; }
    T& operator*() const { return *slot_; }
    T* operator->() const { return slot_; }

    /// Gives the slot back now.
    void end() {
        if (std::exchange(released_, true)) return;
        slot_ = nullptr;
        (pingpong_->*release_)();
    }

private:
    bool released_;
    PingPong<T>* pingpong_;
    T* slot_;
    Release release_;
};

}  // namespace details

}  // namespace vela::thread
