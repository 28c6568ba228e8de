#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <ostream>

namespace vela::profiler {

/// Splits wall-clock time between marks: time belongs to the mark on top of the stack, or to nobody
/// when the stack is empty.
///
/// A key is the address of the variable that holds a mark's name, so that two places with the same
/// name stay apart.  The variable must outlive the stack.  The clock runs from construction to
/// `stop`.
///
/// Threads:  none but the one that made it.
template <typename Key>
class Stack {
public:
    /// The time from now on belongs to `key`.  False, with nothing done, after `stop`.
    bool push(const Key* key) {
        if (stopped_) return false;
        book_(stack_.empty() ? nullptr : stack_.back());
        stack_.push_back(key);
        return true;
    }

    /// The time from now on belongs to the mark below; there must be an open one.  False, with
    /// nothing done, after `stop`.
    bool pop() {
        if (stopped_) return false;
        book_(stack_.back());
        stack_.pop_back();
        return true;
    }

    /// Books what is left to nobody and ends the profile.  False if it is ended already or a mark
    /// is still open.
    bool stop() {
        if (stopped_ || !stack_.empty()) return false;
        book_(nullptr);
        stopped_ = true;
        return true;
    }

    /// Writes the report, marks in the order of their addresses; with warnings above it if it comes
    /// too early to be right.  Each line goes out when it ends.
    void stream(std::ostream& out) const;

private:
    using Clock = std::chrono::steady_clock;
    using Nanoseconds = std::int64_t;

    void book_(const Key* key);
    static double seconds_(Nanoseconds duration);
    static void stream_split_(std::ostream& out, Nanoseconds part, Nanoseconds total);

    bool stopped_ = false;
    std::deque<const Key*> stack_;
    Clock::time_point last_ = Clock::now();
    std::map<const Key*, Nanoseconds> durations_;  // null: time outside of any mark
};

template <typename Key>
void Stack<Key>::book_(const Key* key) {
    const auto now = Clock::now();
    durations_[key] += std::chrono::duration_cast<std::chrono::nanoseconds>(now - last_).count();
    last_ = now;
}

template <typename Key>
void Stack<Key>::stream(std::ostream& out) const {
    if (!stack_.empty())
        out << "WARNING: You are querying the profiling information during profiling. This will "
               "affect the results."
            << std::endl;
    if (!stopped_)
        out << "WARNING: You did not stop the profiler: you will not correctly see the "
               "not-accounted-for times. This will affect the results."
            << std::endl;

    Nanoseconds total = 0;
    for (const auto& [key, duration] : durations_)
        total += duration;
    out << "Total duration: " << seconds_(total) << " seconds" << std::endl;

    for (const auto& [key, duration] : durations_) {
        if (key == nullptr) continue;
        out << *key << ": ";
        stream_split_(out, duration, total);
    }

    out << "*** Not accounted for: ";
    const auto nobody = durations_.find(nullptr);
    if (nobody == durations_.end())
        out << "{seconds: 0}{fraction: 0}" << std::endl;
    else
        stream_split_(out, nobody->second, total);
}

// Whole microseconds: what lies below is noise to the reader.
template <typename Key>
double Stack<Key>::seconds_(Nanoseconds duration) {
    const Nanoseconds microseconds = duration / 1000;
    return static_cast<double>(microseconds) * 1e-6;
}

template <typename Key>
void Stack<Key>::stream_split_(std::ostream& out, Nanoseconds part, Nanoseconds total) {
    out << "{seconds: " << seconds_(part)
        << "}{fraction: " << static_cast<double>(part) / static_cast<double>(total) << '}'
        << std::endl;
}

}  // namespace vela::profiler
