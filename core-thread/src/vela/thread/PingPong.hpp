#pragma once

#include <array>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vela/thread/details/Push.hpp>

namespace vela::thread {

/// Hands values from one side to the other through two slots that swap roles.
///
/// One slot is filled while the other is drained; when the second of the two sides is done, they
/// swap, without a copy.  So at most two values are under way, and the first push can be drained
/// at once:
///
///     push 1   [1] .     swap at once, the drain side had nothing
///     push 2   [1] 2     a third push would wait
///     drain    [2] .     1 is taken, its end swaps
///
/// Whoever finds the hand-over closed gets no slot.  Old values stay in the slots until they are
/// overwritten.
///
/// Threads:  any number may fill and drain, each waits its turn.  A slot is its holder's alone.
template <typename T>
class PingPong {
public:
    using Push = details::Push<T>;

    /// The slot that is being drained; its end makes room for the next value.
    class Pop : public details::Hold<T> {
    public:
        using details::Hold<T>::Hold;
    };

    PingPong() { open(); }
    PingPong(const PingPong&) = delete;
    PingPong& operator=(const PingPong&) = delete;

    /// False if it is not closed.
    bool open();

    /// Waits until what was pushed has been drained, then closes; a value that nobody drains
    /// blocks it for ever.  False if it is not open.
    bool close();

    /// Waits for room.  No slot once closing has begun.
    [[nodiscard]] Push start_filling() {
        T* const slot = start_filling_();
        return Push(*this, slot, &PingPong::push_is_ready_);
    }

    /// Waits for a value.  While closing, values that are left are still given out; then no slot.
    [[nodiscard]] Pop start_draining() {
        T* const slot = start_draining_();
        return Pop(*this, slot, &PingPong::pop_is_ready_);
    }

private:
    enum class State { closed, open, closing };
    enum class Side {
        ready,   // the slot may be taken
        busy,    // taken
        done,    // released, waits for the other side
        stopped  // no slot any more
    };
    using Lock = std::unique_lock<std::mutex>;

    T* start_filling_();
    T* start_draining_();
    void push_is_ready_() { is_ready_(fill_state_, drain_state_); }
    void pop_is_ready_() { is_ready_(drain_state_, fill_state_); }
    void is_ready_(Side& own, Side& other);
    void wake_();

    State state_ = State::closed;
    std::array<T, 2> slots_{};
    T* fill_ = nullptr;
    T* drain_ = nullptr;
    Side fill_state_ = Side::stopped;
    Side drain_state_ = Side::stopped;
    std::mutex mutex_;  // guards all of these, but not what is in a busy slot

    // A ready slot is for one alone; the others need not be woken for it.
    std::condition_variable fill_cv_;
    std::condition_variable drain_cv_;
};

template <typename T>
bool PingPong<T>::open() {
    const Lock lock(mutex_);
    if (state_ != State::closed) return false;
    fill_ = &slots_[0];
    drain_ = &slots_[1];
    fill_state_ = Side::ready;
    drain_state_ = Side::done;
    state_ = State::open;
    return true;
}

template <typename T>
bool PingPong<T>::close() {
    Lock lock(mutex_);
    if (state_ != State::open) return false;
    state_ = State::closing;
    fill_cv_.wait(lock, [this] {
        // A push that ends after the drainers have been sent home has nobody to go to.
        const bool dropped = fill_state_ == Side::done && drain_state_ == Side::stopped;
        return fill_state_ == Side::ready || fill_state_ == Side::stopped || dropped;
    });
    fill_ = nullptr;
    fill_state_ = Side::stopped;
    drain_cv_.wait(lock,
                   [this] { return drain_state_ == Side::done || drain_state_ == Side::stopped; });
    drain_ = nullptr;
    drain_state_ = Side::stopped;
    state_ = State::closed;
    wake_();
    return true;
}

template <typename T>
T* PingPong<T>::start_filling_() {
    Lock lock(mutex_);
    fill_cv_.wait(lock, [this] {
        return fill_state_ == Side::ready ||
               (state_ != State::open && fill_state_ == Side::stopped);
    });
    if (state_ == State::open && fill_state_ == Side::ready) {
        fill_state_ = Side::busy;
    } else {
        fill_ = nullptr;
        fill_state_ = Side::stopped;
    }
    return fill_;
}

template <typename T>
T* PingPong<T>::start_draining_() {
    Lock lock(mutex_);
    drain_cv_.wait(lock, [this] {
        if (state_ != State::closed && drain_state_ == Side::ready) return true;
        return state_ != State::open &&
               (drain_state_ == Side::done || drain_state_ == Side::stopped);
    });
    if (state_ != State::closed && drain_state_ == Side::ready) {
        drain_state_ = Side::busy;
    } else {
        drain_ = nullptr;
        drain_state_ = Side::stopped;
    }
    return drain_;
}

template <typename T>
void PingPong<T>::is_ready_(Side& own, Side& other) {
    const Lock lock(mutex_);
    if (own != Side::stopped) own = Side::done;
    if (own == Side::done && other == Side::done) {
        std::swap(fill_, drain_);
        own = other = Side::ready;
    }
    wake_();
}

template <typename T>
void PingPong<T>::wake_() {
    if (state_ != State::open) {
        fill_cv_.notify_all();
        drain_cv_.notify_all();
        return;
    }
    if (fill_state_ == Side::ready) fill_cv_.notify_one();
    if (drain_state_ == Side::ready) drain_cv_.notify_one();
}

}  // namespace vela::thread
